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

} // namespace cardsong::test
