// What a window does with messages that its own procedure leaves alone.
#include "platform/linux/ce/gdi.h"
#include "platform/linux/user/desktop.h"
#include "platform/linux/user/visible_region.h"
#include "platform/linux/user/window_position.h"

namespace cardsong::user {

namespace {

constexpr ULONG_PTR kSystemColorCount = 32; // a class brush below this is a system colour's number plus one

HBRUSH ClassBrush(HWND window)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop->windows.Find(window);
    return record == nullptr || record->windowClass == nullptr ? nullptr : record->windowClass->background;
}

HBRUSH StockBrush(int index)
{
    return static_cast<HBRUSH>(GetStockObject(index));
}

HBRUSH RealBrush(HBRUSH brush)
{
    constexpr ULONG_PTR kColorWindow = 5;
    const auto number = reinterpret_cast<ULONG_PTR>(brush);
    if (number == 0 || number >= kSystemColorCount)
        return brush;
    return StockBrush(number - 1 == kColorWindow ? WHITE_BRUSH : LTGRAY_BRUSH);
}

LRESULT EraseBackground(HWND window, HDC context)
{
    const HBRUSH brush = RealBrush(ClassBrush(window));
    if (brush == nullptr)
        return 0;
    RECT client{};
    GetClientRect(window, &client);
    FillRect(context, &client, brush);
    return 1;
}

LRESULT HitWholeWindow(HWND window, LPARAM at)
{
    RECT rect{};
    GetWindowRect(window, &rect);
    const auto x = static_cast<SHORT>(LOWORD(static_cast<ULONG_PTR>(at)));
    const auto y = static_cast<SHORT>(HIWORD(static_cast<ULONG_PTR>(at)));
    const bool isInside = x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
    return isInside ? HTCLIENT : HTNOWHERE;
}

void SetRedraw(HWND window, bool redraw)
{
    LockedDesktop desktop;
    WindowRecord* const record = desktop->windows.Find(window);
    if (record == nullptr)
        return;
    record->style = redraw ? record->style | WS_VISIBLE : record->style & ~WS_VISIBLE;
    TreeChanged(*desktop);
}

void PaintNothing(HWND window)
{
    PAINTSTRUCT paint{};
    BeginPaint(window, &paint);
    EndPaint(window, &paint);
}

} // namespace

} // namespace cardsong::user

using namespace cardsong::user;

LRESULT DefWindowProcW(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_NCCREATE: return TRUE;
    case WM_CLOSE: DestroyWindow(window); return 0;
    case WM_PAINT: PaintNothing(window); return 0;
    case WM_ERASEBKGND: return EraseBackground(window, reinterpret_cast<HDC>(wParam));
    case WM_NCHITTEST: return HitWholeWindow(window, lParam);
    case WM_WINDOWPOSCHANGED: TellSizeAndPlace(window, *reinterpret_cast<const WINDOWPOS*>(lParam)); return 0;
    case WM_SETREDRAW: SetRedraw(window, wParam != 0); return 0;
    case WM_ACTIVATE:
        if (LOWORD(wParam) != WA_INACTIVE)
            SetFocus(window);
        return 0;
    case WM_CANCELMODE:
        if (GetCapture() == window)
            ReleaseCapture();
        return 0;
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORSTATIC: return reinterpret_cast<LRESULT>(StockBrush(LTGRAY_BRUSH));
    default: return 0;
    }
}
