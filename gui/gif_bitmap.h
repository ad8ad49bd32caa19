// From a GIF file to a 16-bit bitmap: the one door through which skin images come. Knows no window.
#pragma once

#include "platform/ce.h"

#include <cstdint>
#include <span>

// A top-down RGB565 section, owned by the caller (DeleteObject). Its rows are padded to 4 bytes: an odd width has one
// spare pixel a row. Null, with null `bits`, when a side is not above zero, the size is above the decoder's pixel
// limit, or the system refuses.
HBITMAP CreateRgb565Dib(int widthPx, int heightPx, std::uint16_t** bits);

// Copies a canvas (rows without padding) into the bits of a bitmap of that size (rows padded). Copies nothing when
// `canvas` does not hold widthPx x heightPx pixels.
void CopyFramePixels(std::span<const std::uint16_t> canvas, std::uint16_t* bits, int widthPx, int heightPx);

// The first image of the file on the whole logical screen, on white where the file names no background. Null when
// `path` is null or the file or its first image cannot be decoded. Decodes the file anew on each call; owned by the
// caller.
HBITMAP LoadGifBitmap(LPCWSTR path);
