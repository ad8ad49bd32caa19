// Which top-level window of a thread is the active one.
#pragma once

#include "platform/linux/user/desktop.h"

namespace cardsong::user {

// Makes `topLevel` (null: none) the active window of the calling thread. `other` is named to the one that loses.
void ActivateHere(HWND topLevel, WORD cause, HWND other);
// The window is about to go or has been hidden: if it was active, another one becomes active.
void LeaveWindow(HWND window);

} // namespace cardsong::user
