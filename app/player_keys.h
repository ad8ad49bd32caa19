// What each key of the device does in the main window, and when. Sends commands.
#pragma once

#include "platform/ce.h"

// Acts on WM_KEYDOWN: the command of the key, if it has one.
void ActOnKey(HWND window, WPARAM key, LPARAM details);

// Whether the window acts on the key when the dialog manager asks about it (WM_GETDLGCODE). The dialog manager
// dispatches a key afterwards that it has no use for; a key that is acted on then is left alone when it asks, or it
// would act twice.
[[nodiscard]] bool ActsWhenAsked(WPARAM key);
