// Timers of windows and threads, on the clock in force. A tick exists only when somebody retrieves it.
#pragma once

#include "platform/linux/user/message_filter.h"

namespace cardsong::user {

// The due timer that waited longest, as a WM_TIMER message; its next tick is the first after now.
std::optional<MSG> TakeDueTick(const Desktop& desktop, ThreadQueue& queue, const MessageFilter& filter);
// When the next timer of the filter is due; kernel::kNever when there is none.
std::uint64_t NextTickMs(const Desktop& desktop, const ThreadQueue& queue, const MessageFilter& filter);

} // namespace cardsong::user
