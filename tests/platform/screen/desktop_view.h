// What the desktop itself says of the player's windows, in its own pixels.
#pragma once

#include <windows.h>

namespace cardsong::test {

SIZE DesktopClientSize(HWND window);
POINT DesktopCorner(HWND window); // of the client area
COLORREF DesktopPixel(HWND window, int x, int y);
bool IsOnDesktop(HWND window); // seen and not wholly transparent

} // namespace cardsong::test
