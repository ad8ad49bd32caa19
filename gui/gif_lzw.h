// Decompression of the image data of a GIF (LZW with codes of variable size). Knows no picture, only its number of
// pixels.
#pragma once

#include "gui/gif_reader.h"

#include <cstdint>
#include <span>

// Reads the minimum code size and the data sub-blocks at `reader` and writes colour indices into `pixels`, in the order
// in which the data deliver them. Whatever the result, the reader then stands behind the chain of sub-blocks. True also
// when the data end early: the pixels that they do not deliver keep their value. False when the data are not of the
// format: more pixels than there is room for, a run that starts with a code that stands for no single pixel, a code
// beyond the table right behind one that lay beyond the next free entry (which leaves no string to go on from), or a
// string table that would grow past 4096 entries (no deferred clear: a stream that codes on with a full table is
// refused).
[[nodiscard]] bool DecodeGifPixels(GifReader& reader, std::span<std::uint8_t> pixels);
