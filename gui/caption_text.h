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

// Measures `text` in the font of `context`. Left and top become 0, the bottom the font's height with its external
// leading. The right edge grows by the text's width from where it stands; a null text makes it the screen's.
void MeasureText(HDC context, LPCWSTR text, RECT& rect);
