#include "tests/platform/screen/desktop_view.h"

namespace cardsong::test {

SIZE DesktopClientSize(HWND window)
{
    RECT client{};
    GetClientRect(window, &client);
    return { client.right, client.bottom };
}

POINT DesktopCorner(HWND window)
{
    POINT corner{};
    ClientToScreen(window, &corner);
    return corner;
}

RECT DesktopPlace(HWND window)
{
    RECT place{};
    GetWindowRect(window, &place);
    return place;
}

int DesktopFrameWidth(int clientWidthPx, UINT dpi)
{
    RECT place{ 0, 0, clientWidthPx, 1 };
    AdjustWindowRectExForDpi(&place, WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX, FALSE, 0, dpi);
    return place.right - place.left;
}

COLORREF DesktopPixel(HWND window, int x, int y)
{
    const HDC context = GetDC(window);
    const COLORREF color = GetPixel(context, x, y);
    ReleaseDC(window, context);
    return color;
}

bool IsOnDesktop(HWND window)
{
    BYTE alpha = 255;
    GetLayeredWindowAttributes(window, nullptr, &alpha, nullptr);
    return IsWindowVisible(window) && alpha != 0;
}

void DragWindow(HWND window, int x, int y)
{
    const RECT place = DesktopPlace(window);
    SetWindowPos(window, nullptr, place.left + x, place.top + y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
}

} // namespace cardsong::test
