// One picture of a GIF: what its descriptor says, its colour indices, and the whole screen as it looks with it. Knows
// neither bytes nor files.
#pragma once

#include "gif/gif_blocks.h"
#include "gif/gif_pixels.h"

#include <cstddef>
#include <cstdint>
#include <span>

struct GifFrame {
    GifImageDescriptor image;
    GifGraphicControl control;             // all zero when no graphic control extension preceded the image
    PixelBuffer<std::uint8_t> indexMemory; // image width x height
    std::size_t pixelsInData = 0;          // the data may end early; what follows in the memory is no pixel
    std::span<const std::uint16_t> canvas; // screen width x height, RGB565; borrowed until the next frame is decoded

    // Colour indices in the order of the data, interlaced or not.
    std::span<const std::uint8_t> IndexPixels() const { return indexMemory.Pixels().first(pixelsInData); }
};
