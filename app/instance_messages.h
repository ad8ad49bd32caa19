// Messages that programs of the device send each other, and how a running player answers a second start.
#pragma once

#include "platform/ce.h"

extern UINT g_msgAreYouMe;
extern UINT g_msgUserAddSongs;
extern UINT g_msgMassStorage;

// Registers the three messages above.
void RegisterInstanceMessages();

// The topmost visible, enabled window that may be activated and is owned by `window`, directly or through other
// windows; `window` itself when there is none above it. Null when `window` is no top-level window.
[[nodiscard]] HWND FindOwnedActiveWindow(HWND window);

// Brings the player to the front: its topmost pop-up where one is shown.
void ComeToFront(HWND window);
