// What the main window's commands do: one row each.
#pragma once

#include "platform/ce.h"

// Does what the command of a WM_COMMAND says, whose first parameter is `request`. Commands without a row do nothing.
// `control`: the second parameter; 0 when no button of the screen was pressed.
void ActOnCommand(HWND window, WPARAM request, LPARAM control);
