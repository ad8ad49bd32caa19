// How the toolkit writes: the font that goes with the language of the user interface, and the size of a text in it.
// Knows no window.
#pragma once

#include "common/gdi_handles.h"

// The caption font for `sizePoints` on a device of `logPixelsY` pixels an inch: in Chinese (2052 and 1028) the given
// size at normal weight, in every other language 11 points bold.
LOGFONTW ChooseCaptionFont(LANGID language, int sizePoints, int logPixelsY);
// The same for the language in force and the device of `context`. Owned by the caller.
[[nodiscard]] UniqueFont CreateCaptionFont(HDC context, int sizePoints);

// The caption font of one control, made anew only when language, size or device have changed.
class CaptionFont {
public:
    // Borrowed until the next call.
    HFONT Get(HDC context, int sizePoints);

private:
    UniqueFont m_font;
    LONG m_height = 0;
    LONG m_weight = 0;
};

// Measures `text` in the font of `context`: left and top become 0, bottom the top plus the font's height and external
// leading, and the text's width is added to the right edge as it stands. A null text makes the right edge 320.
void MeasureText(HDC context, LPCWSTR text, RECT& rect);
