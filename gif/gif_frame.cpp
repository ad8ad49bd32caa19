#include "gif/gif_frame.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

// The part of the frame that lies on the screen; right and bottom are the first column and row outside.
struct Area {
    std::size_t left, top, right, bottom;
};

Area VisibleArea(const GifScreen& screen, const GifImageDescriptor& image)
{
    const auto clip = [](std::size_t start, std::size_t limit) { return std::min(start, limit); };
    return { clip(image.leftPx, screen.widthPx), clip(image.topPx, screen.heightPx),
             clip(std::size_t{ image.leftPx } + image.widthPx, screen.widthPx),
             clip(std::size_t{ image.topPx } + image.heightPx, screen.heightPx) };
}

struct Pass {
    std::size_t firstRow, step;
};
constexpr std::array<Pass, 1> kInOrder = { { { 0, 1 } } };
constexpr std::array<Pass, 4> kInterlaced = { { { 0, 8 }, { 4, 8 }, { 2, 4 }, { 1, 2 } } };

// Writes one row of indices where it is visible; transparent pixels keep what stands there.
void WriteRow(std::span<const std::uint8_t> indices, const GifColorTable& palette, const GifGraphicControl& control,
              std::span<std::uint16_t> target)
{
    for (std::size_t x = 0; x < target.size(); ++x) {
        const std::uint8_t index = indices[x];
        if (!(control.hasTransparency && index == control.transparentIndex))
            target[x] = palette.colors[index];
    }
}

void WriteFrame(const GifScreen& screen, GifFrame& frame)
{
    const GifImageDescriptor& image = frame.image;
    const GifColorTable& palette = image.localTable.size != 0 ? image.localTable : screen.globalTable;
    const Area area = VisibleArea(screen, image);
    const auto passes = image.isInterlaced ? std::span<const Pass>(kInterlaced) : std::span<const Pass>(kInOrder);
    const std::span<const std::uint8_t> indices = frame.indexPixels.Pixels();
    const std::span<std::uint16_t> canvas = frame.canvas.Pixels();
    std::size_t dataRow = 0;
    for (const Pass pass : passes) {
        for (std::size_t row = pass.firstRow; row < image.heightPx; row += pass.step, ++dataRow) {
            const std::size_t y = image.topPx + row;
            if (y < area.bottom)
                WriteRow(indices.subspan(dataRow * image.widthPx, image.widthPx), palette, frame.control,
                         canvas.subspan(y * screen.widthPx + area.left, area.right - area.left));
        }
    }
}

void CopyArea(const GifScreen& screen, const Area& area, std::span<const std::uint16_t> source,
              std::span<std::uint16_t> target)
{
    for (std::size_t y = area.top; y < area.bottom; ++y) {
        const std::size_t row = y * screen.widthPx;
        std::ranges::copy(source.subspan(row + area.left, area.right - area.left),
                          target.subspan(row + area.left).begin());
    }
}

void FillArea(const GifScreen& screen, const Area& area, std::uint16_t color, std::span<std::uint16_t> target)
{
    for (std::size_t y = area.top; y < area.bottom; ++y)
        std::ranges::fill(target.subspan(y * screen.widthPx + area.left, area.right - area.left), color);
}

void Dispose(const GifScreen& screen, std::uint16_t background, const GifFrame& frame,
             std::span<std::uint16_t> previous)
{
    const Area area = VisibleArea(screen, frame.image);
    if (frame.control.disposal <= 1)
        CopyArea(screen, area, frame.canvas.Pixels(), previous);
    else if (frame.control.disposal == 2 && screen.globalTable.size != 0)
        FillArea(screen, area, background, previous);
    else if (frame.control.disposal == 2)
        std::ranges::fill(previous, background);
}

} // namespace

bool ComposeGifFrame(const GifScreen& screen, std::uint16_t background, PixelBuffer<std::uint16_t>& previous,
                     GifFrame& frame)
{
    if (!frame.canvas.Allocate(screen.widthPx, screen.heightPx))
        return false;
    if (!previous.IsAllocated()) {
        if (!previous.Allocate(screen.widthPx, screen.heightPx))
            return false;
        std::ranges::fill(previous.Pixels(), background);
    }
    std::ranges::copy(previous.Pixels(), frame.canvas.Pixels().begin());
    WriteFrame(screen, frame);
    Dispose(screen, background, frame, previous.Pixels());
    return true;
}
