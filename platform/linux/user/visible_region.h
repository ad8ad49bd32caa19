// Which screen pixels a window may draw on. Worked out when asked for and kept until the tree of windows changes.
#pragma once

#include "platform/linux/user/desktop.h"

namespace cardsong::user {

// Call after every change of place, order, style or number of windows: regions are worked out anew and the contexts
// that programs hold follow.
void TreeChanged(Desktop& desktop);

// Its style and those of all its ancestors have WS_VISIBLE.
bool IsShown(const WindowRecord& record);
POINT ScreenOrigin(const WindowRecord& record);
// The screen pixels of the window and its children: its rectangle inside its ancestors', without the windows above it
// (children yield to siblings only with WS_CLIPSIBLINGS). Empty while it is not shown. Valid until the tree changes.
const Region& ClipRegion(Desktop& desktop, WindowRecord& record);
// The same without the children's pixels if the window has WS_CLIPCHILDREN.
const Region& VisibleRegion(Desktop& desktop, WindowRecord& record);

} // namespace cardsong::user
