// Which window of a thread has the keys.
#pragma once

#include "platform/linux/user/desktop.h"

namespace cardsong::user {

// Focus of the calling thread with its two messages; no activation, no tests.
void ChangeFocus(HWND window);

} // namespace cardsong::user
