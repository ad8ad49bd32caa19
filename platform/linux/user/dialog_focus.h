// Which control of a dialog has the focus, also while the dialog is not active.
#pragma once

#include "platform/linux/ce/user.h"

namespace cardsong::user {

// Moves the focus and with it the look of the default button.
void FocusControl(HWND dialog, HWND control);
void SaveDialogFocus(HWND dialog);
// To the control that had it when it was saved; if that one cannot take it, nobody gets it.
void RestoreSavedFocus(HWND dialog);
// The same, or where nothing was saved to the first control that can have it, or to the dialog itself.
void RestoreDialogFocus(HWND dialog);

// `window` is a descendant of `dialog`.
bool IsInside(HWND dialog, HWND window);

} // namespace cardsong::user
