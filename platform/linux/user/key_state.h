// Which keys are down and which are toggled, as far as a thread has retrieved its messages.
#pragma once

#include "platform/linux/user/message_queue.h"

namespace cardsong::user {

void RememberKey(ThreadQueue& queue, const InputEvent& event);

} // namespace cardsong::user
