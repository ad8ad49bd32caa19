// Play times and numbers as the player shows them, and the size of a text on the screen. Knows no song.
#pragma once

#include "platform/ce.h"

#include <cstdint>

// "--:--" for 0, "0:59", "1:00:00". Every call overwrites the one text that it returns.
const WCHAR* FormatPlayTime(std::uint32_t seconds);

// "7", "-7": no leading zeros.
WString DecimalText(std::int64_t number);

// Of the whole text, in pixels; nothing for null.
SIZE MeasureText(const WCHAR* text, HFONT font);
