// The contexts on the screen that programs hold. Each follows its window about.
#pragma once

#include "platform/linux/user/desktop.h"

namespace cardsong::user {

// Where the context draws, in screen pixels; empty for a window that is gone. `origin`: of its window on the screen.
Region DrawableRegion(Desktop& desktop, const HeldContext& held, POINT& origin);
// A context like `held` for the thread with that queue.
HDC HoldContext(Desktop& desktop, HeldContext held, const std::shared_ptr<ThreadQueue>& holder);
// False when no such context is held.
bool ReleaseContext(Desktop& desktop, HDC context);
// Makes every context that is held follow its window.
void RefreshContexts(Desktop& desktop);

} // namespace cardsong::user
