#include "gif/gif_canvas.h"

#include "gif/gif_row.h"

#include <algorithm>
#include <array>

namespace {

GifArea VisibleArea(const GifScreen& screen, const GifImageDescriptor& image)
{
    const auto clip = [](std::size_t start, std::size_t limit) { return std::min(start, limit); };
    return { clip(image.leftPx, screen.widthPx), clip(image.topPx, screen.heightPx),
             clip(std::size_t{ image.leftPx } + image.widthPx, screen.widthPx),
             clip(std::size_t{ image.topPx } + image.heightPx, screen.heightPx) };
}

bool CoversScreen(const GifScreen& screen, const GifArea& area, const GifFrame& frame)
{
    return area.left == 0 && area.top == 0 && area.right == screen.widthPx && area.bottom == screen.heightPx &&
           !frame.control.hasTransparency && frame.IndexPixels().size() == frame.indexMemory.Pixels().size();
}

struct Pass {
    std::size_t firstRow, step;
};
constexpr std::array<Pass, 1> kInOrder = { { { 0, 1 } } };
constexpr std::array<Pass, 4> kInterlaced = { { { 0, 8 }, { 4, 8 }, { 2, 4 }, { 1, 2 } } };

// Calls visit(y, row) for each row of `area` and its row of a canvas, from the first column of the area to the last.
void ForEachRow(std::span<std::uint16_t> canvas, const GifScreen& screen, const GifArea& area, auto&& visit)
{
    for (std::size_t y = area.top; y < area.bottom; ++y)
        visit(y, canvas.subspan(y * screen.widthPx + area.left, area.right - area.left));
}

void WriteFrame(const GifScreen& screen, const GifArea& area, const GifFrame& frame, std::span<std::uint16_t> canvas)
{
    const GifImageDescriptor& image = frame.image;
    const GifColorTable& palette = image.localTable.size != 0 ? image.localTable : screen.globalTable;
    const auto passes = image.isInterlaced ? std::span<const Pass>(kInterlaced) : std::span<const Pass>(kInOrder);
    const std::span<const std::uint8_t> indices = frame.IndexPixels();
    std::size_t at = 0;
    for (const Pass pass : passes) {
        for (std::size_t row = pass.firstRow; row < image.heightPx; row += pass.step, at += image.widthPx) {
            const std::size_t y = image.topPx + row;
            if (y >= area.bottom || at >= indices.size())
                continue;
            const std::size_t count = std::min(area.right - area.left, indices.size() - at);
            WriteGifRow(indices.subspan(at, count), palette, frame.control,
                        canvas.subspan(y * screen.widthPx + area.left, count));
        }
    }
}

} // namespace

bool GifCanvas::Draw(const GifScreen& screen, std::uint16_t background, GifFrame& frame)
{
    if (!m_pixels.IsAllocated() && !m_pixels.Allocate(screen.widthPx, screen.heightPx))
        return false;
    const GifArea area = VisibleArea(screen, frame.image);
    const bool isOnBackground = m_left == Left::Background;
    if (!isOnBackground)
        Dispose(screen, background);
    else if (!CoversScreen(screen, area, frame))
        std::ranges::fill(m_pixels.Pixels(), background);
    Left left = Left::Picture;
    if (frame.control.disposal > 1 && (isOnBackground || (frame.control.disposal == 2 && screen.globalTable.size == 0)))
        left = Left::Background;
    else if (frame.control.disposal == 2)
        left = Left::BackgroundInArea;
    else if (frame.control.disposal > 2)
        left = Left::SavedInArea;
    if (left == Left::SavedInArea && !Save(screen, area))
        return false;
    WriteFrame(screen, area, frame, m_pixels.Pixels());
    m_left = left;
    m_area = area;
    frame.canvas = m_pixels.Pixels();
    return true;
}

// Brings about what the last frame leaves; it is the picture then.
void GifCanvas::Dispose(const GifScreen& screen, std::uint16_t background)
{
    const std::size_t areaWidth = m_area.right - m_area.left;
    const std::span<const std::uint16_t> saved = m_saved.Pixels();
    ForEachRow(m_pixels.Pixels(), screen, m_area, [&](std::size_t y, std::span<std::uint16_t> row) {
        if (m_left == Left::BackgroundInArea)
            std::ranges::fill(row, background);
        else if (m_left == Left::SavedInArea)
            std::ranges::copy(saved.subspan((y - m_area.top) * areaWidth, areaWidth), row.begin());
    });
    m_left = Left::Picture;
}

bool GifCanvas::Save(const GifScreen& screen, const GifArea& area)
{
    const std::size_t areaWidth = area.right - area.left;
    if (!m_saved.Allocate(static_cast<std::uint32_t>(areaWidth), static_cast<std::uint32_t>(area.bottom - area.top)))
        return false;
    const std::span<std::uint16_t> saved = m_saved.Pixels();
    ForEachRow(m_pixels.Pixels(), screen, area, [&](std::size_t y, std::span<const std::uint16_t> row) {
        std::ranges::copy(row, saved.subspan((y - area.top) * areaWidth).begin());
    });
    return true;
}
