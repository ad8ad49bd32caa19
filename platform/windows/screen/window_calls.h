// The window functions that carry coordinates, in the pixels of the device's screen. platform/ce.h puts them in the
// place of the system's own; without a screen that was set up they are the system's own.
#pragma once

#include <windows.h>

namespace cardsong::device {

ATOM RegisterClassW(const WNDCLASSW* windowClass);
HWND CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR text, DWORD style, int x, int y, int widthPx,
                     int heightPx, HWND parent, HMENU menuOrId, HINSTANCE instance, LPVOID parameter);
HWND CreateDialogIndirectParamW(HINSTANCE instance, LPCDLGTEMPLATEW dialogTemplate, HWND parent, DLGPROC procedure,
                                LPARAM parameter);
LONG_PTR SetWindowLongPtrW(HWND window, int index, LONG_PTR value);
BOOL ShowWindow(HWND window, int command);
BOOL SetForegroundWindow(HWND window);
BOOL MoveWindow(HWND window, int x, int y, int widthPx, int heightPx, BOOL repaint);
BOOL SetWindowPos(HWND window, HWND after, int x, int y, int widthPx, int heightPx, UINT flags);
BOOL GetWindowRect(HWND window, LPRECT rect);
BOOL GetClientRect(HWND window, LPRECT rect);
BOOL ClientToScreen(HWND window, LPPOINT point);
BOOL ScreenToClient(HWND window, LPPOINT point);
HDC GetDC(HWND window);
HDC BeginPaint(HWND window, PAINTSTRUCT* paint);
BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase);
BOOL ValidateRect(HWND window, const RECT* rect);
BOOL GetUpdateRect(HWND window, LPRECT rect, BOOL erase);
int GetDeviceCaps(HDC context, int index);
HFONT CreateFontIndirectW(const LOGFONTW* description);
BOOL GetMessageW(LPMSG message, HWND window, UINT first, UINT last);
BOOL PeekMessageW(LPMSG message, HWND window, UINT first, UINT last, UINT remove);

} // namespace cardsong::device
