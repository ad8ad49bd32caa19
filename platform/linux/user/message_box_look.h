// How a message box is drawn: the skin's colours, by the API's own functions. Knows no window procedure.
#pragma once

#include "platform/linux/ce/gdi.h"
#include "platform/linux/ce/user.h"
#include "platform/linux/user/message_box_layout.h"

namespace cardsong::user {

constexpr UINT kMessageFormat = DT_WORDBREAK | DT_NOPREFIX;
constexpr int kSignPx = 36;

// For the user interface's language; the caller deletes it.
HFONT MakeMessageFont();

void DrawMessageBox(HDC context, const MessageBoxLayout& plan, const std::u16string& caption, HFONT font);

enum class ButtonFace { Normal, Focused, Pressed };
void DrawMessageBoxButton(HDC context, const RECT& rect, LPCWSTR caption, ButtonFace face, HFONT font);

} // namespace cardsong::user
