// Birth and death of windows.
#pragma once

#include "platform/linux/user/desktop.h"

namespace cardsong::user {

// The thread has ended: its windows vanish without a message.
void RemoveWindowsOfThread(Desktop& desktop, const std::shared_ptr<ThreadQueue>& queue);

} // namespace cardsong::user
