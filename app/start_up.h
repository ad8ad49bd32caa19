// From the start of the process to the shown main window. Knows nothing of what the window does.
#pragma once

#include "platform/ce.h"

// 1 when the storage card is present and usable, else 0.
[[nodiscard]] int IsStorageCardPresent();

// Creates and shows the main window. Null when start-up must end: no card (said to the user), or no window.
[[nodiscard]] HWND InitInstance(HINSTANCE instance, int showCommand);

// Runs one message of the main loop: dialog keys first, then translation and dispatch.
void RunMessage(HWND mainWindow, MSG& message);
