// One row of colour indices as RGB565 pixels: the innermost work of drawing a frame. Knows no frame.
#pragma once

#include "gif/gif_blocks.h"

#include <cstdint>
#include <span>

// Writes the colours of `indices` into `target`, of the same length; where an index is the transparent one, `target`
// keeps what it has.
void WriteGifRow(std::span<const std::uint8_t> indices, const GifColorTable& palette, const GifGraphicControl& control,
                 std::span<std::uint16_t> target);
