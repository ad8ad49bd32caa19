#include "platform/windows/screen/window_calls.h"

#include "platform/screen_size.h"
#include "platform/windows/screen/desktop_keyboard.h"
#include "platform/windows/screen/device_screen.h"
#include "platform/windows/screen/window_procedures.h"

namespace cardsong::device {
namespace {

using namespace screen;

constexpr int kDeviceDpi = 96;

bool IsChild(HWND window)
{
    return (GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) != 0;
}

// Where a window that the player places at (x, y) lies on the desktop.
RECT PlaceOf(bool isChild, int x, int y, int widthPx, int heightPx)
{
    const POINT corner = isChild ? POINT{ x * Scale(), y * Scale() } : ToDesktop({ x, y });
    return { corner.x, corner.y, corner.x + widthPx * Scale(), corner.y + heightPx * Scale() };
}

} // namespace

ATOM RegisterClassW(const WNDCLASSW* windowClass)
{
    if (!IsSetUp() || windowClass == nullptr)
        return ::RegisterClassW(windowClass);
    return RegisterPlayersClass(*windowClass);
}

HWND CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR text, DWORD style, int x, int y, int widthPx,
                     int heightPx, HWND parent, HMENU menuOrId, HINSTANCE instance, LPVOID parameter)
{
    if (IsSetUp())
        style |= kDeviceStyle;
    if (IsSetUp() && x != CW_USEDEFAULT && widthPx != CW_USEDEFAULT) {
        const RECT place = PlaceOf((style & WS_CHILD) != 0, x, y, widthPx, heightPx);
        x = place.left;
        y = place.top;
        widthPx = place.right - place.left;
        heightPx = place.bottom - place.top;
    }
    // A device has no menus: what a desktop would take for one is the window's id there.
    const HMENU childId = (style & WS_CHILD) != 0 ? menuOrId : nullptr;
    const HWND window = ::CreateWindowExW(exStyle, className, text, style, x, y, widthPx, heightPx, parent, childId,
                                          instance, parameter);
    if (window != nullptr && childId != menuOrId)
        ::SetWindowLongPtrW(window, GWLP_ID, reinterpret_cast<LONG_PTR>(menuOrId));
    return window;
}

HWND CreateDialogIndirectParamW(HINSTANCE instance, LPCDLGTEMPLATEW dialogTemplate, HWND parent, DLGPROC procedure,
                                LPARAM parameter)
{
    const ScreenWindowComes coming(IsSetUp() && parent == nullptr && ScreenWindow() == nullptr);
    return ::CreateDialogIndirectParamW(instance, dialogTemplate, parent, procedure, parameter);
}

// A procedure put in front of a window's own gets its messages in the device's pixels too.
LONG_PTR SetWindowLongPtrW(HWND window, int index, LONG_PTR value)
{
    if (!IsSetUp() || index != GWLP_WNDPROC)
        return ::SetWindowLongPtrW(window, index, value);
    return ReplaceProcedure(window, reinterpret_cast<WNDPROC>(value));
}

// A hidden screen does not take the keyboard.
BOOL ShowWindow(HWND window, int command)
{
    if (IsHidden() && command == SW_SHOW && !IsChild(window))
        command = SW_SHOWNA;
    return ::ShowWindow(window, command);
}

// On a device the lowest bit of the handle asks for the last active pop-up of the window.
BOOL SetForegroundWindow(HWND window)
{
    if (!IsSetUp())
        return ::SetForegroundWindow(window);
    const auto target = reinterpret_cast<HWND>(reinterpret_cast<ULONG_PTR>(window) & ~ULONG_PTR{ 1 });
    if (IsHidden())
        return ::IsWindow(target);
    if (::IsIconic(ScreenWindow()))
        ::ShowWindow(ScreenWindow(), SW_RESTORE);
    return ::SetForegroundWindow(target);
}

BOOL MoveWindow(HWND window, int x, int y, int widthPx, int heightPx, BOOL repaint)
{
    if (!IsSetUp())
        return ::MoveWindow(window, x, y, widthPx, heightPx, repaint);
    const RECT place =
        window == ScreenWindow() ? PlaceOfScreenWindow() : PlaceOf(IsChild(window), x, y, widthPx, heightPx);
    return ::MoveWindow(window, place.left, place.top, place.right - place.left, place.bottom - place.top, repaint);
}

BOOL SetWindowPos(HWND window, HWND after, int x, int y, int widthPx, int heightPx, UINT flags)
{
    if (!IsSetUp())
        return ::SetWindowPos(window, after, x, y, widthPx, heightPx, flags);
    if (window == ScreenWindow())
        return ::SetWindowPos(window, after, 0, 0, 0, 0, flags | SWP_NOMOVE | SWP_NOSIZE);
    const RECT place = PlaceOf(IsChild(window), x, y, widthPx, heightPx);
    return ::SetWindowPos(window, after, place.left, place.top, place.right - place.left, place.bottom - place.top,
                          flags);
}

BOOL GetWindowRect(HWND window, LPRECT rect)
{
    if (IsSetUp() && window != nullptr && window == ScreenWindow() && rect != nullptr) {
        *rect = { 0, 0, kScreenWidthPx, kScreenHeightPx };
        return TRUE;
    }
    if (!::GetWindowRect(window, rect))
        return FALSE;
    if (IsSetUp()) {
        const POINT corner = FromDesktop({ rect->left, rect->top });
        const POINT end = FromDesktop({ rect->right, rect->bottom });
        *rect = { corner.x, corner.y, end.x, end.y };
    }
    return TRUE;
}

BOOL GetClientRect(HWND window, LPRECT rect)
{
    if (!::GetClientRect(window, rect))
        return FALSE;
    *rect = Reduce(*rect);
    return TRUE;
}

BOOL ClientToScreen(HWND window, LPPOINT point)
{
    if (!IsSetUp() || point == nullptr)
        return ::ClientToScreen(window, point);
    POINT place{ point->x * Scale(), point->y * Scale() };
    if (!::ClientToScreen(window, &place))
        return FALSE;
    *point = FromDesktop(place);
    return TRUE;
}

BOOL ScreenToClient(HWND window, LPPOINT point)
{
    if (!IsSetUp() || point == nullptr)
        return ::ScreenToClient(window, point);
    POINT place = ToDesktop(*point);
    if (!::ScreenToClient(window, &place))
        return FALSE;
    const RECT reduced = Reduce({ place.x, place.y, place.x, place.y });
    *point = { reduced.left, reduced.top };
    return TRUE;
}

HDC GetDC(HWND window)
{
    const HDC context = ::GetDC(window);
    if (window != nullptr)
        UseDevicePixels(context);
    return context;
}

HDC BeginPaint(HWND window, PAINTSTRUCT* paint)
{
    const HDC context = ::BeginPaint(window, paint);
    if (context != nullptr && paint != nullptr) {
        paint->rcPaint = Reduce(paint->rcPaint);
        UseDevicePixels(context);
    }
    return context;
}

BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase)
{
    const RECT place = rect != nullptr ? Enlarge(*rect) : RECT{};
    return ::InvalidateRect(window, rect != nullptr ? &place : nullptr, erase);
}

BOOL ValidateRect(HWND window, const RECT* rect)
{
    const RECT place = rect != nullptr ? Enlarge(*rect) : RECT{};
    return ::ValidateRect(window, rect != nullptr ? &place : nullptr);
}

BOOL GetUpdateRect(HWND window, LPRECT rect, BOOL erase)
{
    const BOOL isAnything = ::GetUpdateRect(window, rect, erase);
    if (rect != nullptr)
        *rect = Reduce(*rect);
    return isAnything;
}

// A device's screen has 96 dots to the inch, whatever monitor shows it.
int GetDeviceCaps(HDC context, int index)
{
    if (!IsSetUp())
        return ::GetDeviceCaps(context, index);
    switch (index) {
    case LOGPIXELSX:
    case LOGPIXELSY: return kDeviceDpi;
    case HORZRES: return kScreenWidthPx;
    case VERTRES: return kScreenHeightPx;
    default: return ::GetDeviceCaps(context, index);
    }
}

BOOL GetMessageW(LPMSG message, HWND window, UINT first, UINT last)
{
    const BOOL got = ::GetMessageW(message, window, first, last);
    if (got > 0)
        TurnIntoDeviceInput(*message);
    return got;
}

BOOL PeekMessageW(LPMSG message, HWND window, UINT first, UINT last, UINT remove)
{
    const BOOL got = ::PeekMessageW(message, window, first, last, remove);
    if (got)
        TurnIntoDeviceInput(*message);
    return got;
}

} // namespace cardsong::device
