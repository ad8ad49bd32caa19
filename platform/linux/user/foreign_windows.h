// Handles of windows of the device's other programs. One can be found, asked whether it is there, and posted to; every
// other function takes it for a window that is gone.
#pragma once

#include "platform/linux/user/desktop.h"

namespace cardsong::user {

// All are called without the lock.

// Null when no other program has such a window.
HWND FindForeignWindow(LPCWSTR className);
[[nodiscard]] bool IsForeignWindow(HWND window);
// False, with the last error set, when the window is gone, or for a message that does not cross over: only registered
// messages do, and commands without a control.
bool PostToForeignWindow(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// To every window of every other program, if it is a registered message.
void BroadcastToOtherPrograms(UINT message, WPARAM wParam, LPARAM lParam);

} // namespace cardsong::user
