// The window that a user works with, as keys of the machine's keyboard see it: what it takes, and where its buttons
// lie.
#pragma once

#include "platform/linux/user/desktop.h"

namespace cardsong::user {

// The queue's active window, if it takes the command that the event gives; null: it does not.
HWND CommandReceiver(const Desktop& desktop, const ThreadQueue& queue, const InputEvent& event);

} // namespace cardsong::user
