// What the desktop itself says of the player's windows, in its own pixels.
#pragma once

#include <windows.h>

namespace cardsong::test {

SIZE DesktopClientSize(HWND window);
POINT DesktopCorner(HWND window); // of the client area
RECT DesktopPlace(HWND window);   // of its outer edges
// How wide the frame around so wide a client area is on a monitor of so many dots to the inch.
int DesktopFrameWidth(int clientWidthPx, UINT dpi);
COLORREF DesktopPixel(HWND window, int x, int y);
bool IsOnDesktop(HWND window);              // seen and not wholly transparent
void DragWindow(HWND window, int x, int y); // by so many pixels

} // namespace cardsong::test
