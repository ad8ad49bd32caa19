// From the display's taps and keys to messages: hit tests, capture, activation by tap, double clicks.
#pragma once

#include "platform/linux/user/message_filter.h"

namespace cardsong::user {

// The thread's next input that `filter` allows, as a message. With `remove` it has its effects: key states, activation.
std::optional<MSG> TakeInput(const std::shared_ptr<ThreadQueue>& queue, const MessageFilter& filter, bool remove);

} // namespace cardsong::user
