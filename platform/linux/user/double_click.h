// When a press is the second half of a double click.
#pragma once

#include "platform/linux/user/desktop.h"

namespace cardsong::user {

bool IsDoubleClick(const Desktop& desktop, const ThreadQueue& queue, HWND window, const InputEvent& event);
// `message`: the press as its window gets it. A third quick tap is a first one again.
void RememberPress(ThreadQueue& queue, const MSG& message, const InputEvent& event);

} // namespace cardsong::user
