// Which messages a caller of GetMessageW and PeekMessageW wants. Knows the order in which they are handed out.
#pragma once

#include "platform/linux/user/message_queue.h"

namespace cardsong::user {

struct MessageFilter {
    HWND window = nullptr;   // with its children; null: any, also none
    bool onlyThread = false; // messages without a window
    UINT first = 0;
    UINT last = 0; // both 0: any message

    bool AllowsMessage(UINT message) const
    {
        return (first == 0 && last == 0) || (message >= first && message <= last);
    }
    bool AllowsWindow(const Desktop& desktop, HWND candidate) const;
};

} // namespace cardsong::user
