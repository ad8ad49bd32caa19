// The device's 320 x 240 screen as a part of a desktop: where it lies, how large its pixels are, and which window shows
// it. Until it is set up every coordinate is the desktop's own.
#pragma once

#include "platform/ce.h"

namespace cardsong::screen {

enum class Frame {
    Window,     // a window of the desktop, with a caption to take it by
    FullScreen, // the largest whole scale that the monitor holds, black around it
    Hidden,     // there, for whoever draws and looks, but neither seen nor touched
};

struct ScreenOptions {
    Frame frame = Frame::Window;
    int scale = 0; // 0: as large as fits the desktop comfortably
};

// Styles that every window of a device has unasked: no window draws over its children or over those above it.
constexpr DWORD kDeviceStyle = WS_CLIPCHILDREN | WS_CLIPSIBLINGS;

// Call it before the player makes its first window.
void SetUpScreen(const ScreenOptions& options);
bool IsSetUp();
// 1 until the screen is set up.
int Scale();

// The window that shows the screen: the first one without a parent that the player makes. Null before and after.
HWND ScreenWindow();
bool IsHidden();
// `window` becomes the screen's: it gets the frame of a desktop window, and its client area lies where the screen is.
void AdoptScreenWindow(HWND window);
void ForgetScreenWindow();
// The desktop's place of the screen window's outer edges.
RECT PlaceOfScreenWindow();
// How far the screen window has gone over the desktop since the last call.
SIZE TakeWay();
// The screen window is on a monitor of so many dots to the inch now: its frame changes, its pixels do not.
void TakeDpi(UINT dpi, POINT outerCorner);
// Takes a window without a parent out of everybody's sight when the screen is hidden; else changes nothing.
void HideLikeScreen(HWND window);

// Between the device's pixels and the desktop's. A rectangle that is made smaller is rounded outwards, so that none of
// its pixels is lost.
RECT Enlarge(const RECT& rect);
RECT Reduce(const RECT& rect);
POINT ToDesktop(POINT onScreen);
POINT FromDesktop(POINT onDesktop);

// The context draws in the device's pixels from here on.
void UseDevicePixels(HDC context);

} // namespace cardsong::screen
