// The pixels that a surface shows where a viewport lies on it. Pixels are RGB565 as the screen's own; what a surface
// makes of them is its own affair.
#pragma once

#include "platform/host/viewport.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace cardsong::host {

// Fills `row` with what the surface shows in line `line` from column `firstColumn` on. `picture`: the whole screen,
// rows without padding. Pixels are repeated at a whole scale; a smaller viewport shows the mean of those that it
// covers. The viewport is one of FitViewport; the line and the columns must lie within it.
void ShowRow(std::span<const std::uint16_t> picture, const Viewport& viewport, int line, int firstColumn,
             std::span<std::uint16_t> row);

// The memory of a surface, its rows from the top down.
struct SurfaceMemory {
    std::byte* pixels;
    std::ptrdiff_t pitchBytes;
    int bytesPerPixel;
};
// Writes pixels in the surface's own format.
using WriteRow = std::function<void(std::span<const std::uint16_t> row, std::byte* target)>;
// Draws `part` of the surface, which must lie within it and within the viewport. Lines that are alike are written once
// and copied.
void DrawPart(std::span<const std::uint16_t> picture, const Viewport& viewport, const RECT& part,
              const SurfaceMemory& surface, const WriteRow& write);

// Where red, green and blue stand in a 32-bit pixel.
struct PixelShifts {
    int red;
    int green;
    int blue;
};
// Writes RGB565 pixels as 32-bit ones; `target` is as long as `row`.
void WidenRow(std::span<const std::uint16_t> row, PixelShifts shifts, std::span<std::uint32_t> target);

} // namespace cardsong::host
