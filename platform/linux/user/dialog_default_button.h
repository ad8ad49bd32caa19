// Which button of a dialog answers Enter, and which one looks like it.
#pragma once

#include "platform/linux/ce/user.h"

namespace cardsong::user {

// The control whose id is `id`, or whose id ends in these 16 bits when none has it whole.
HWND FindControl(HWND dialog, LONG id);
// The default button's id that the dialog was given or finds among its buttons; 0 when there is none.
LONG DefaultId(HWND dialog);
// Names the default button, without a change of its look.
void SetDefaultId(HWND dialog, LONG id);
// What DM_SETDEFID does: names the default button and gives it the look.
void ChangeDefault(HWND dialog, LONG id);
// What DM_GETDEFID answers.
LRESULT AnswerDefaultId(HWND dialog);
// The look goes to `control` if that is a push button, else back to the default button.
void MoveDefaultLook(HWND dialog, HWND control);

} // namespace cardsong::user
