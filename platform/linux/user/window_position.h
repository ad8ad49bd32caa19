// Moving, sizing, ordering, showing and hiding of windows, with the painting that follows from it.
#pragma once

#include "platform/linux/user/desktop.h"

namespace cardsong::user {

// The window, its owners and what they own come to the top of their band. No message.
void RaiseToTop(Desktop& desktop, WindowRecord& record);
// What the default procedure makes of WM_WINDOWPOSCHANGED: WM_MOVE where the place changed, WM_SIZE where the size did.
void TellSizeAndPlace(HWND window, const WINDOWPOS& position);

} // namespace cardsong::user
