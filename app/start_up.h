// From the start of the process to the shown main window, step by step. Knows nothing of what the window does.
#pragma once

#include "platform/ce.h"

// Every step of the start, in its order. `commandLine`: may be null. Returns the shown main window; null when the
// program is to end at once, with 0: another player runs, there is no card, or no window.
[[nodiscard]] HWND StartUp(HINSTANCE instance, LPCWSTR commandLine, int showCommand);

// Its last step: creates and shows the main window. Null when start-up must end: no card (said to the user), or no
// window.
[[nodiscard]] HWND InitInstance(HINSTANCE instance, int showCommand);
