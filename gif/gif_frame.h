// One picture of a GIF: what its descriptor says, its colour indices, and the whole screen as it looks with it. Knows
// neither bytes nor files.
#pragma once

#include "gif/gif_blocks.h"
#include "gif/gif_pixels.h"

#include <cstdint>

struct GifFrame {
    GifImageDescriptor image;
    GifGraphicControl control;             // all zero when no graphic control extension preceded the image
    PixelBuffer<std::uint8_t> indexPixels; // image width x height, in the order of the data (interlaced or not)
    PixelBuffer<std::uint16_t> canvas;     // screen width x height, RGB565
};

// Fills `frame.canvas`: the screen as `previous` shows it with the frame on top, clipped to the screen. Then applies
// the frame's disposal to `previous`, for the next frame. A `previous` without content first gets the screen's size and
// `background` (RGB565). A frame without any colour table is black. False when there is no memory for the canvases.
[[nodiscard]] bool ComposeGifFrame(const GifScreen& screen, std::uint16_t background,
                                   PixelBuffer<std::uint16_t>& previous, GifFrame& frame);
