// The order of windows: children among their siblings, top-level windows with their owners and the topmost band.
#pragma once

#include "platform/linux/user/desktop.h"

namespace cardsong::user {

// A new child goes to the bottom of its siblings, a new top-level window to the top of its band.
void LinkNewWindow(WindowRecord& record);
void UnlinkWindow(WindowRecord& record);

// Puts one window in order. `after` as SetWindowPos takes it: HWND_TOP, HWND_BOTTOM, HWND_TOPMOST, HWND_NOTOPMOST or a
// sibling that is to stand right above. A top-level window keeps to its band and above its owner.
void PlaceInOrder(Desktop& desktop, WindowRecord& record, HWND after);
// Whether `PlaceInOrder` would move the window.
bool WouldMoveInOrder(Desktop& desktop, const WindowRecord& record, HWND after);

// The windows owned by `record` that stand below it, lowest first: each is to be placed above it again.
std::vector<WindowRecord*> OwnedWindowsBelow(const WindowRecord& record);
// The topmost top-level window and its topmost style follow HWND_TOPMOST and HWND_NOTOPMOST.
void ChangeBand(Desktop& desktop, WindowRecord& record, HWND after);

} // namespace cardsong::user
