// In which order the keyboard goes through the controls of a dialog.
#pragma once

#include "platform/linux/ce/user.h"

namespace cardsong::user {

enum class Direction { Forward, Backward };

// The next visible, enabled tab stop after `from` (null: the first), round and round; null when there is none. Goes
// into children with WS_EX_CONTROLPARENT.
HWND NextTabStop(HWND dialog, HWND from, Direction direction);
// The next visible, enabled control of the group that `from` (null: the first control) stands in.
HWND NextInGroup(HWND dialog, HWND from, Direction direction);

} // namespace cardsong::user
