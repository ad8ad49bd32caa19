// Window side of the API: classes, windows, messages, timers, focus, dialogs. Signatures and results are the API's.
#pragma once

#include "platform/linux/ce/messages.h"
#include "platform/linux/ce/types.h"

using WNDPROC = LRESULT(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);
using DLGPROC = INT_PTR(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);
using TIMERPROC = void(CALLBACK*)(HWND, UINT, UINT_PTR, DWORD);
using WNDENUMPROC = BOOL(CALLBACK*)(HWND, LPARAM);

struct WNDCLASSW {
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;
    LPCWSTR lpszMenuName;
    LPCWSTR lpszClassName;
};
struct CREATESTRUCTW {
    LPVOID lpCreateParams;
    HINSTANCE hInstance;
    HMENU hMenu;
    HWND hwndParent;
    int cy;
    int cx;
    int y;
    int x;
    LONG style;
    LPCWSTR lpszName;
    LPCWSTR lpszClass;
    DWORD dwExStyle;
};
struct MSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    POINT pt;
};
using LPMSG = MSG*;
struct PAINTSTRUCT {
    HDC hdc;
    BOOL fErase;
    RECT rcPaint;
    BOOL fRestore;
    BOOL fIncUpdate;
    BYTE rgbReserved[32];
};
struct DRAWITEMSTRUCT {
    UINT CtlType;
    UINT CtlID;
    UINT itemID;
    UINT itemAction;
    UINT itemState;
    HWND hwndItem;
    HDC hDC;
    RECT rcItem;
    ULONG_PTR itemData;
};
struct WINDOWPOS {
    HWND hwnd;
    HWND hwndInsertAfter;
    int x;
    int y;
    int cx;
    int cy;
    UINT flags;
};
#pragma pack(push, 2)
struct DLGTEMPLATE {
    DWORD style;
    DWORD dwExtendedStyle;
    WORD cdit;
    short x;
    short y;
    short cx;
    short cy;
};
#pragma pack(pop)
using LPCDLGTEMPLATEW = const DLGTEMPLATE*;

// ---- classes and windows ----
ATOM RegisterClassW(const WNDCLASSW* windowClass);
BOOL UnregisterClassW(LPCWSTR name, HINSTANCE instance);
HICON LoadIconW(HINSTANCE instance, LPCWSTR name);
HWND CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR text, DWORD style, int x, int y, int widthPx,
                     int heightPx, HWND parent, HMENU menuOrId, HINSTANCE instance, LPVOID parameter);
BOOL DestroyWindow(HWND window);
LRESULT DefWindowProcW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CallWindowProcW(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LONG_PTR GetWindowLongPtrW(HWND window, int index);
LONG_PTR SetWindowLongPtrW(HWND window, int index, LONG_PTR value);
BOOL IsWindow(HWND window);
BOOL ShowWindow(HWND window, int command);
BOOL IsWindowVisible(HWND window);
BOOL EnableWindow(HWND window, BOOL enable);
BOOL IsWindowEnabled(HWND window);
BOOL MoveWindow(HWND window, int x, int y, int widthPx, int heightPx, BOOL repaint);
BOOL SetWindowPos(HWND window, HWND after, int x, int y, int widthPx, int heightPx, UINT flags);
BOOL GetWindowRect(HWND window, LPRECT rect);
BOOL GetClientRect(HWND window, LPRECT rect);
BOOL ClientToScreen(HWND window, LPPOINT point);
BOOL ScreenToClient(HWND window, LPPOINT point);
HWND GetParent(HWND window);
HWND GetWindow(HWND window, UINT relation);
HWND GetDesktopWindow();
HWND FindWindowW(LPCWSTR className, LPCWSTR text);
BOOL EnumWindows(WNDENUMPROC callback, LPARAM parameter);
HWND GetDlgItem(HWND dialog, int id);
int GetDlgCtrlID(HWND window);
int GetClassNameW(HWND window, LPWSTR buffer, int units);
DWORD GetWindowThreadProcessId(HWND window, LPDWORD processId);

// ---- painting of windows ----
HDC GetDC(HWND window);
int ReleaseDC(HWND window, HDC context);
HDC BeginPaint(HWND window, PAINTSTRUCT* paint);
BOOL EndPaint(HWND window, const PAINTSTRUCT* paint);
BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase);
BOOL ValidateRect(HWND window, const RECT* rect);
BOOL GetUpdateRect(HWND window, LPRECT rect, BOOL erase);
BOOL UpdateWindow(HWND window);

// ---- input ----
HWND SetFocus(HWND window);
HWND GetFocus();
HWND SetCapture(HWND window);
HWND GetCapture();
BOOL ReleaseCapture();
HWND GetActiveWindow();
HWND SetActiveWindow(HWND window);
HWND GetForegroundWindow();
BOOL SetForegroundWindow(HWND window);
SHORT GetKeyState(int key);

// ---- messages and timers ----
UINT RegisterWindowMessageW(LPCWSTR name);
BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
void PostQuitMessage(int exitCode);
BOOL GetMessageW(LPMSG message, HWND window, UINT first, UINT last);
BOOL PeekMessageW(LPMSG message, HWND window, UINT first, UINT last, UINT remove);
BOOL TranslateMessage(const MSG* message);
LRESULT DispatchMessageW(const MSG* message);
UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT periodMs, TIMERPROC procedure);
BOOL KillTimer(HWND window, UINT_PTR id);

// ---- dialogs ----
HWND CreateDialogIndirectParamW(HINSTANCE instance, LPCDLGTEMPLATEW dialogTemplate, HWND parent, DLGPROC procedure,
                                LPARAM parameter);
BOOL IsDialogMessageW(HWND dialog, LPMSG message);
// Returns the id of the button that was chosen, or 0 when the box could not be shown or its thread was told to quit.
int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type);
