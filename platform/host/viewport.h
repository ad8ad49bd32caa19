// Where the screen's pixels lie in a larger picture: whole-number scale, centred, black around it. Pure arithmetic.
#pragma once

#include "platform/ce.h"

#include <cstdint>
#include <optional>
#include <span>

namespace cardsong::host {

struct Viewport {
    int scale = 1;
    int left = 0; // negative when the surface is smaller than the screen
    int top = 0;
    bool operator==(const Viewport&) const = default;
};

// The largest viewport that a surface of this size holds; scale 1 at least.
Viewport FitViewport(int surfaceWidthPx, int surfaceHeightPx);
// The scale of a window on a desktop whose free part has this size. The window takes at most three fifths of it, but
// has a scale of 2 where that fits at all.
int ComfortableScale(int desktopWidthPx, int desktopHeightPx);

// The screen's pixel under a point of the surface; nothing in the black around it.
std::optional<POINT> ToScreenPoint(const Viewport& viewport, int x, int y);
// The same, but a point in the black becomes the nearest pixel: for a finger that slides off.
POINT ToNearestScreenPoint(const Viewport& viewport, int x, int y);

// Where red, green and blue stand in a 32-bit pixel.
struct PixelShifts {
    int red;
    int green;
    int blue;
};
// Writes `row` with each pixel repeated `scale` times; `target` has row.size() * scale elements.
void EnlargeRow(std::span<const std::uint16_t> row, int scale, PixelShifts shifts, std::span<std::uint32_t> target);
void EnlargeRow(std::span<const std::uint16_t> row, int scale, std::span<std::uint16_t> target);

} // namespace cardsong::host
