// How the player comes to the front of the device's screen.
#pragma once

#include "platform/ce.h"

// The topmost visible, enabled window that may be activated and is owned by `window`, directly or through other
// windows; `window` itself when there is none above it. Null when `window` is no top-level window.
[[nodiscard]] HWND FindOwnedActiveWindow(HWND window);

// Brings the player to the front: its topmost pop-up where one is shown.
void ComeToFront(HWND window);
