// Image data whose codes are wider than 32 bits: a minimum code size of 32 or more. Knows no pixel, since no code of
// theirs stands for one.
#pragma once

#include "gif/gif_reader.h"

// Reads the chain of data sub-blocks at `reader`, which then stands behind it. The clear code is 0, and every other
// code lies at or above the end code 1: false when a code is not 0. Of a code count the bits in the four bytes from its
// first bit on. Fewer than five bytes that wait are joined with the next sub-block; a code that still is not whole ends
// the data.
[[nodiscard]] bool AreWideCodesClear(GifReader& reader, unsigned codeBits);
