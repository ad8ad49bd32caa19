// Decompression of the image data of a GIF (LZW with codes of variable size). Knows no picture, only its number of
// pixels.
#pragma once

#include "gif/gif_reader.h"

#include <cstddef>
#include <cstdint>
#include <span>

struct GifPixelData {
    bool isValid = false;
    std::size_t count = 0; // pixels that the data hold
};

// Reads the minimum code size and the data sub-blocks at `reader` and writes colour indices into `pixels`, in the order
// of the data; behind those that the data hold `pixels` may be anything. The reader then stands behind the chain of
// sub-blocks, whatever the result. Valid also when the data end early. Not valid when
// - the data hold more pixels than there is room for;
// - a run starts with a code that stands for no single pixel;
// - a code lies beyond the table, and the code before it lay beyond the next free entry: there is no string to go on
//   from;
// - the string table would grow past 4096 entries: there is no deferred clear;
// - there is no memory for the table.
[[nodiscard]] GifPixelData DecodeGifPixels(GifReader& reader, std::span<std::uint8_t> pixels);
