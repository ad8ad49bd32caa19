// One line of text in a box: how the toolkit writes everything that is not wrapped. Knows no window.
#pragma once

#include "common/gdi_handles.h"

// The system's default face at `sizePoints` on the device of `context`, in every language. Owned by the caller.
[[nodiscard]] UniqueFont CreatePlainFont(HDC context, int sizePoints);

// Draws `text` as a single line into `box` on whatever is there; the context keeps its font, mode and colour.
// `placement`: DT_ flags besides DT_SINGLELINE.
void DrawTextLine(HDC target, WStringView text, const RECT& box, HFONT font, COLORREF color, UINT placement);
