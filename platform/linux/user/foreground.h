// Which thread's top-level window the display's keys are meant for.
#pragma once

#include "platform/linux/user/desktop.h"

namespace cardsong::user {

// Makes a top-level window active in its thread and brings it to the foreground and the top. Called from any thread;
// what concerns another thread's windows happens there, when it next looks for messages.
void TakeForeground(HWND topLevel, WORD cause);

} // namespace cardsong::user
