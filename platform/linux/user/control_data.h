// What the classes "button" and "static" keep in the bytes of their windows. Knows the public API only.
#pragma once

#include "platform/linux/ce/gdi.h"
#include "platform/linux/ce/user.h"

#include <string>

namespace cardsong::user {

LONG_PTR ControlState(HWND control);
void SetControlState(HWND control, LONG_PTR state);
// WM_SETFONT and WM_GETFONT of a control; null: the system font.
HFONT ControlFont(HWND control);
void SetControlFont(HWND control, HFONT font);
// The text that the control was created with.
std::u16string ControlText(HWND control);
// Selects the control's font and draws its text.
void DrawControlText(HWND control, HDC context, RECT rect, UINT format);

} // namespace cardsong::user
