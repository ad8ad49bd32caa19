// From the start of the process to the shown main window. Knows nothing of what the window does.
#pragma once

#include "platform/ce.h"

// Whether a player runs already; it is asked to come to the front, and this start is to end.
[[nodiscard]] bool HandOverToRunningPlayer();

// Creates and shows the main window. Null when start-up must end: no card (said to the user), or no window.
[[nodiscard]] HWND InitInstance(HINSTANCE instance, int showCommand);
