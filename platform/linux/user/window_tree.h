// Walks over the tree of windows: parents, top-level windows.
#pragma once

#include "platform/linux/user/desktop.h"

namespace cardsong::user {

WindowRecord* TopLevelOf(WindowRecord* record);
bool IsSameOrDescendant(const WindowRecord* ancestor, const WindowRecord* record);
// The top-level windows, topmost first.
std::vector<HWND> TopLevelWindows(const Desktop& desktop);
// The children, topmost first; none for a window that is gone.
std::vector<HWND> ChildrenOf(HWND window);

} // namespace cardsong::user
