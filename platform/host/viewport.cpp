#include "platform/host/viewport.h"

#include "platform/screen_size.h"

#include <algorithm>

namespace cardsong::host {
namespace {

int FloorDivide(int value, int divisor)
{
    const int quotient = value / divisor;
    return value % divisor < 0 ? quotient - 1 : quotient;
}

POINT PointUnder(const Viewport& viewport, int x, int y)
{
    return { FloorDivide(x - viewport.left, viewport.scale), FloorDivide(y - viewport.top, viewport.scale) };
}

} // namespace

Viewport FitViewport(int surfaceWidthPx, int surfaceHeightPx)
{
    const int scale = std::max(1, std::min(surfaceWidthPx / kScreenWidthPx, surfaceHeightPx / kScreenHeightPx));
    return { scale, FloorDivide(surfaceWidthPx - kScreenWidthPx * scale, 2),
             FloorDivide(surfaceHeightPx - kScreenHeightPx * scale, 2) };
}

int ComfortableScale(int desktopWidthPx, int desktopHeightPx)
{
    const int largest = std::min(desktopWidthPx / kScreenWidthPx, desktopHeightPx / kScreenHeightPx);
    const int comfortable = FitViewport(desktopWidthPx / 5 * 3, desktopHeightPx / 5 * 3).scale;
    return std::clamp(largest, 1, std::max(2, comfortable));
}

std::optional<POINT> ToScreenPoint(const Viewport& viewport, int x, int y)
{
    const POINT point = PointUnder(viewport, x, y);
    if (point.x < 0 || point.x >= kScreenWidthPx || point.y < 0 || point.y >= kScreenHeightPx)
        return std::nullopt;
    return point;
}

POINT ToNearestScreenPoint(const Viewport& viewport, int x, int y)
{
    const POINT point = PointUnder(viewport, x, y);
    return { std::clamp<LONG>(point.x, 0, kScreenWidthPx - 1), std::clamp<LONG>(point.y, 0, kScreenHeightPx - 1) };
}

void EnlargeRow(std::span<const std::uint16_t> row, int scale, PixelShifts shifts, std::span<std::uint32_t> target)
{
    std::uint32_t* out = target.data();
    for (const std::uint16_t pixel : row) {
        const std::uint32_t red = pixel >> 11;
        const std::uint32_t green = (pixel >> 5) & 0x3F;
        const std::uint32_t blue = pixel & 0x1F;
        const std::uint32_t wide = (((red << 3) | (red >> 2)) << shifts.red) |
                                   (((green << 2) | (green >> 4)) << shifts.green) |
                                   (((blue << 3) | (blue >> 2)) << shifts.blue);
        out = std::fill_n(out, scale, wide);
    }
}

void EnlargeRow(std::span<const std::uint16_t> row, int scale, std::span<std::uint16_t> target)
{
    std::uint16_t* out = target.data();
    for (const std::uint16_t pixel : row)
        out = std::fill_n(out, scale, pixel);
}

} // namespace cardsong::host
