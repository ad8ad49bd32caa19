// Which window a point of the screen belongs to.
#pragma once

#include "platform/linux/user/desktop.h"

namespace cardsong::user {

// A window that input is meant for, and its thread.
struct Target {
    HWND window = nullptr; // null: none
    std::shared_ptr<ThreadQueue> queue;
    bool isDisabled = false;
};

// The window of that handle; none when it is gone.
Target TargetOf(HWND window);
// The window under the point (screen pixels), as far as the calling thread, whose queue is `self`, can tell: a window
// of another thread is found, but not asked whether it is transparent. Looks from `first` (null: the topmost) down; a
// window that calls itself transparent is passed over.
Target HitTest(const std::shared_ptr<ThreadQueue>& self, POINT at, HWND first);

} // namespace cardsong::user
