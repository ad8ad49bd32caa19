// Decompression of the image data of a GIF (LZW with codes of variable size). Knows no picture, only its number of
// pixels.
#pragma once

#include "gif/gif_reader.h"

#include <cstdint>
#include <span>

// Reads the minimum code size and the data sub-blocks at `reader` and writes colour indices into `pixels`, in the order
// of the data. The reader then stands behind the chain of sub-blocks, whatever the result. True also when the data end
// early: the pixels that are missing keep their value. False when
// - the data hold more pixels than there is room for;
// - a run starts with a code that stands for no single pixel;
// - a code lies beyond the table, and the code before it lay beyond the next free entry: there is no string to go on
//   from;
// - the string table would grow past 4096 entries: there is no deferred clear.
[[nodiscard]] bool DecodeGifPixels(GifReader& reader, std::span<std::uint8_t> pixels);
