// The order of a dialog's controls for the keyboard, and its default button. Knows no message loop.
#pragma once

#include "platform/linux/ce/user.h"

namespace cardsong::user {

enum class Direction { Forward, Backward };

// The next visible, enabled tab stop after `from` (null: the first), round and round; null when there is none. Goes
// into children with WS_EX_CONTROLPARENT.
HWND NextTabStop(HWND dialog, HWND from, Direction direction);
// The next visible, enabled control of the group that `from` (null: the first control) stands in.
HWND NextInGroup(HWND dialog, HWND from, Direction direction);
// `window` is a descendant of `dialog`.
bool IsInside(HWND dialog, HWND window);

// The control whose id is `id`, or whose id ends in these 16 bits when none has it whole.
HWND FindControl(HWND dialog, LONG id);
// The default button's id that the dialog was given or finds among its buttons; 0 when there is none.
LONG DefaultId(HWND dialog);
void SetDefaultId(HWND dialog, LONG id);
bool IsDialog(HWND window);

// Moves the focus and with it the look of the default button.
void FocusControl(HWND dialog, HWND control);
void SaveDialogFocus(HWND dialog);
// To the control that had it when it was saved; if that one cannot take it, nobody gets it.
void RestoreSavedFocus(HWND dialog);
// The same, or where nothing was saved to the first control that can have it, or to the dialog itself.
void RestoreDialogFocus(HWND dialog);

} // namespace cardsong::user
