// Colours and rectangles as the texts that the registry keeps. It knows no registry.
#pragma once

#include "platform/ce.h"

// What a text without a colour gives: -1.
inline constexpr COLORREF kNoColor = 0xFFFFFFFF;

// "RGB(255,0,0)"
WString ColorText(COLORREF color);
// "RECT(30,3,210,23)"
WString RectText(const RECT& rect);

// "RGB" stands anywhere in the text, in any case. The first number begins at the first digit of the text, and so has no
// sign; it and the next end at a comma, in at most 9 characters; of the last at most 9 digits count, with spaces
// between them. Of each number the low 8 bits count. kNoColor when anything is missing.
COLORREF ParseColor(WStringView text);
// The same with "RECT" and four numbers, of which every bit counts. Empty at the origin when anything is missing.
RECT ParseRect(WStringView text);
