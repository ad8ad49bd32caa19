// Which window has the keys: focus within a thread, the active window of a thread, the foreground among threads.
#pragma once

#include "platform/linux/user/desktop.h"

namespace cardsong::user {

// Makes a top-level window active in its thread and brings it to the foreground and the top. Called from any thread;
// what concerns another thread's windows happens there, when it next looks for messages.
void TakeForeground(HWND topLevel, WORD cause);
// Makes `topLevel` (null: none) the active window of the calling thread. `other` is named to the one that loses.
void ActivateHere(HWND topLevel, WORD cause, HWND other);
// The window is about to go or has been hidden: if it was active, another one becomes active.
void LeaveWindow(HWND window);
// Focus of the calling thread with its two messages; no activation, no tests.
void ChangeFocus(HWND window);

} // namespace cardsong::user
