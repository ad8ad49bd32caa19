// Lays ink on RGB565 pixels as far as a coverage says: the inner loop of all text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace cardsong::gdi {

// Red and blue in the low half, green in the high half, each with room above it for a product with 32.
constexpr std::uint32_t Spread(std::uint16_t pixel)
{
    return (pixel | (std::uint32_t{ pixel } << 16)) & 0x07E0F81F;
}

// `coverage` 0 leaves the pixel, 255 makes it `ink`; between them lie 31 steps, as many as a channel has.
constexpr std::uint16_t Blend(std::uint16_t pixel, std::uint16_t ink, std::uint8_t coverage)
{
    const std::uint32_t weight = (coverage + 4U) >> 3;
    const std::uint32_t below = Spread(pixel);
    const std::uint32_t mixed = (below + (((Spread(ink) - below) * weight) >> 5)) & 0x07E0F81F;
    return static_cast<std::uint16_t>(mixed | (mixed >> 16));
}

// Most of a text's box is empty: it is passed over eight pixels at a time.
inline void BlendRow(std::uint16_t* pixels, const std::uint8_t* coverage, std::size_t count, std::uint16_t ink)
{
    std::size_t i = 0;
    while (i < count) {
        std::uint64_t eight = 0;
        if (i + sizeof(eight) <= count) {
            std::memcpy(&eight, coverage + i, sizeof(eight));
            if (eight == 0) {
                i += sizeof(eight);
                continue;
            }
        }
        const std::size_t end = i + sizeof(eight) <= count ? i + sizeof(eight) : count;
        for (; i < end; ++i) {
            if (coverage[i] != 0)
                pixels[i] = Blend(pixels[i], ink, coverage[i]);
        }
    }
}

} // namespace cardsong::gdi
