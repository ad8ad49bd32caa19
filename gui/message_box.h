// A short message to the user in the system's message box, formatted like C's printf.
#pragma once

#include "platform/ce.h"

// The text's end is cut off beyond this, the zero included.
constexpr int kMessageTextUnits = 1024;

// Shows a box with the caption "GUI", an exclamation sign and an OK button, and returns when it is closed; windows of
// the thread work on meanwhile. `owner` may be null. Returns IDOK, or 0 when the box could not be shown.
int ShowMessageBox(HWND owner, LPCWSTR format, ...);
