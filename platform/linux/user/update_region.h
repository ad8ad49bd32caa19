// What windows owe to be painted: their update regions, and what a change uncovers.
#pragma once

#include "platform/linux/user/desktop.h"

namespace cardsong::user {

enum class Reach { AsStyled, AllChildren }; // AsStyled: not into the children of a window with WS_CLIPCHILDREN

// Adds `area` (screen pixels) to the update regions of the window and its children, as far as they are visible.
void InvalidateTree(Desktop& desktop, WindowRecord& record, const Region& area, bool erase, Reach reach);
// The parent and its other children get `area` (screen pixels), which `except` no longer covers, to paint.
void ExposeBeneath(Desktop& desktop, WindowRecord& parent, const Region& area, const WindowRecord* except);
// Empties the update regions of the window and of all windows inside it, whatever their styles.
void ForgetUpdates(WindowRecord& record);

// Empties the window's update region and returns what it was, in the window's own coordinates.
Region TakeUpdate(WindowRecord& record);

// Whether the window itself is due a WM_PAINT. What of its update region cannot be seen is forgotten: whatever uncovers
// it invalidates it.
bool IsDuePaint(Desktop& desktop, WindowRecord& record);
// The first window of the thread, parents before children, that is due a WM_PAINT; null when there is none.
HWND FindWindowToPaint(Desktop& desktop, const std::shared_ptr<ThreadQueue>& queue,
                       const std::function<bool(HWND)>& allows);
// Whether the window, or one inside it, is due a WM_PAINT.
bool OwesPaint(Desktop& desktop, WindowRecord& record);

} // namespace cardsong::user
