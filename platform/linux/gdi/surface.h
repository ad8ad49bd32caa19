// Pixels as the screen has them: RGB565 words in rows. Knows neither handles nor contexts.
#pragma once

#include "platform/linux/ce/types.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace cardsong::gdi {

// A borrowed block of pixels. `top` is the first word of the upper row; the step to the row below may be negative.
struct Surface {
    std::uint16_t* top = nullptr;
    std::ptrdiff_t rowWords = 0;
    int widthPx = 0;
    int heightPx = 0;

    std::uint16_t* At(int x, int y) const { return top + y * rowWords + x; }
    RECT Bounds() const { return { 0, 0, widthPx, heightPx }; }
};

constexpr std::uint16_t PixelFromColor(COLORREF color)
{
    const unsigned red = color & 0xFF;
    const unsigned green = (color >> 8) & 0xFF;
    const unsigned blue = (color >> 16) & 0xFF;
    return static_cast<std::uint16_t>(((red >> 3) << 11) | ((green >> 2) << 5) | (blue >> 3));
}

// The five or six bits are repeated below themselves, so that white stays 0xFFFFFF.
constexpr COLORREF ColorFromPixel(std::uint16_t pixel)
{
    const int red = pixel >> 11;
    const int green = (pixel >> 5) & 0x3F;
    const int blue = pixel & 0x1F;
    return RGB((red << 3) | (red >> 2), (green << 2) | (green >> 4), (blue << 3) | (blue >> 2));
}

constexpr bool IsEmpty(const RECT& rect)
{
    return rect.right <= rect.left || rect.bottom <= rect.top;
}

constexpr RECT Intersect(const RECT& a, const RECT& b)
{
    return { std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
             std::min(a.bottom, b.bottom) };
}

// Fills `part`, which lies within the surface: one row pixel by pixel, the others copied from it.
inline void FillPixels(const Surface& surface, const RECT& part, std::uint16_t pixel)
{
    const LONG widthPx = part.right - part.left;
    const std::uint16_t* first = std::fill_n(surface.At(part.left, part.top), widthPx, pixel) - widthPx;
    for (LONG y = part.top + 1; y < part.bottom; ++y)
        std::memcpy(surface.At(part.left, y), first, static_cast<std::size_t>(widthPx) * sizeof(pixel));
}

// Half-open range of coordinates, wide enough that no caller's numbers overflow it.
struct Range {
    std::int64_t low;
    std::int64_t high;
};

// The pixels that a start and a signed extent name. A negative extent counts backwards; the start is its first pixel.
constexpr Range RangeOf(std::int64_t start, std::int64_t extent)
{
    if (extent >= 0)
        return { start, start + extent };
    return { start + extent + 1, start + 1 };
}

// Keeps the parts of both ranges that fit in a coordinate.
constexpr RECT RectOf(Range x, Range y)
{
    const auto fit = [](std::int64_t value) {
        return static_cast<LONG>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
    };
    return { fit(x.low), fit(y.low), fit(x.high), fit(y.high) };
}

} // namespace cardsong::gdi
