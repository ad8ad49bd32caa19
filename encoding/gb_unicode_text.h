// Converts GB2312 text to Unicode. It knows no other code page and guesses nothing.
#pragma once

#include "encoding/utf16_unit.h"

// Converts zero-terminated GB2312 text to UTF-16, one unit a character, and writes NO terminating zero: the caller
// clears `destination` first. It holds at least as many units as `source` has bytes. Neither may be null. Known are the
// hanzi 0xB0A1 to 0xDDF9; every other byte becomes itself, from 0x80 on sign-extended (0xA1 gives 0xFFA1). Keeps no
// state.
extern "C" void gbToUnicode(const char* source, Utf16Unit* destination);
