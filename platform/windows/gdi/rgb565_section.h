// A bitmap of the device's screen format whose pixels are at hand, its first row on top.
#pragma once

#include "platform/ce.h"

#include <cstdint>

namespace cardsong::gdi {

struct Rgb565Section {
    HBITMAP bitmap = nullptr; // owned by whoever asked for it
    std::uint16_t* pixels = nullptr;
    std::size_t rowPixels = 0; // rows end on four bytes

    std::uint16_t* Row(std::size_t y) const { return pixels + y * rowPixels; }
};

// Black; without a bitmap when memory is short.
Rgb565Section MakeRgb565Section(UINT widthPx, UINT heightPx);

constexpr std::uint16_t Rgb565Of(unsigned red, unsigned green, unsigned blue)
{
    return static_cast<std::uint16_t>(red >> 3 << 11 | green >> 2 << 5 | blue >> 3);
}

} // namespace cardsong::gdi
