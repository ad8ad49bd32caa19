#include "platform/host/viewport_rows.h"

#include "platform/screen_size.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace cardsong::host {
namespace {

// The turned picture as steps through the screen's pixels.
struct TurnedPicture {
    std::ptrdiff_t first; // the pixel at its top left
    std::ptrdiff_t right; // from a pixel to its neighbour at the right
    std::ptrdiff_t down;
};

TurnedPicture StepsOf(Turn turn)
{
    constexpr std::ptrdiff_t kRow = kScreenWidthPx;
    constexpr std::ptrdiff_t kLastRow = kRow * (kScreenHeightPx - 1);
    switch (turn) {
    case Turn::Quarter: return { kLastRow, -kRow, 1 };
    case Turn::Half: return { kLastRow + kRow - 1, -1, -kRow };
    case Turn::ThreeQuarters: return { kRow - 1, kRow, -1 };
    default: return { 0, 1, kRow };
    }
}

void EnlargeRow(const std::uint16_t* line, std::ptrdiff_t step, int scale, int firstColumn,
                std::span<std::uint16_t> row)
{
    auto out = row.begin();
    std::ptrdiff_t left = scale - firstColumn % scale; // of the pixel's copies
    for (std::ptrdiff_t pixel = firstColumn / scale; out != row.end(); ++pixel, left = scale)
        out = std::fill_n(out, std::min(left, row.end() - out), line[pixel * step]);
}

// The pixels of a picture, `count` of them, that lie under the pixel `index` of fewer, `lengthPx`. Each weighs what of
// it lies there: a whole one `lengthPx`, all together `count`.
struct Cover {
    int first;
    int end;
    int firstWeight;
    int lastWeight;
    int wholeWeight;

    Cover(int index, int lengthPx, int count)
        : first(index * count / lengthPx), end(((index + 1) * count + lengthPx - 1) / lengthPx),
          firstWeight((first + 1) * lengthPx - index * count), lastWeight((index + 1) * count - (end - 1) * lengthPx),
          wholeWeight(lengthPx)
    {
    }
    int WeightOf(int pixel) const
    {
        if (pixel == first)
            return firstWeight;
        return pixel == end - 1 ? lastWeight : wholeWeight;
    }
};

std::uint16_t Mean(const std::uint16_t* picture, const TurnedPicture& steps, const Cover& across, const Cover& down,
                   int total)
{
    int red = 0;
    int green = 0;
    int blue = 0;
    for (int y = down.first; y < down.end; ++y) {
        const std::uint16_t* pixel = picture + steps.first + y * steps.down + across.first * steps.right;
        for (int x = across.first; x < across.end; ++x, pixel += steps.right) {
            const int weight = across.WeightOf(x) * down.WeightOf(y);
            red += (*pixel >> 11) * weight;
            green += ((*pixel >> 5) & 0x3F) * weight;
            blue += (*pixel & 0x1F) * weight;
        }
    }
    const int half = total / 2;
    return static_cast<std::uint16_t>((red + half) / total << 11 | (green + half) / total << 5 | (blue + half) / total);
}

void ReduceRow(const std::uint16_t* picture, const Viewport& viewport, int line, int firstColumn,
               std::span<std::uint16_t> row)
{
    const TurnedPicture steps = StepsOf(viewport.turn);
    const SIZE size = TurnedSize(viewport.turn);
    const int total = static_cast<int>(size.cx * size.cy);
    const Cover down(line, viewport.heightPx, static_cast<int>(size.cy));
    for (std::uint16_t& pixel : row)
        pixel = Mean(picture, steps, Cover(firstColumn++, viewport.widthPx, static_cast<int>(size.cx)), down, total);
}

} // namespace

void ShowRow(std::span<const std::uint16_t> picture, const Viewport& viewport, int line, int firstColumn,
             std::span<std::uint16_t> row)
{
    const int scale = ScaleOf(viewport);
    line -= viewport.top;
    firstColumn -= viewport.left;
    if (scale == 0) {
        ReduceRow(picture.data(), viewport, line, firstColumn, row);
        return;
    }
    const TurnedPicture steps = StepsOf(viewport.turn);
    EnlargeRow(picture.data() + steps.first + line / scale * steps.down, steps.right, scale, firstColumn, row);
}

void DrawPart(std::span<const std::uint16_t> picture, const Viewport& viewport, const RECT& part,
              const SurfaceMemory& surface, const WriteRow& write)
{
    if (part.left >= part.right)
        return;
    const int scale = ScaleOf(viewport);
    std::vector<std::uint16_t> row(static_cast<std::size_t>(part.right - part.left));
    const std::size_t bytes = row.size() * static_cast<std::size_t>(surface.bytesPerPixel);
    std::byte* target = surface.pixels + part.top * surface.pitchBytes + part.left * surface.bytesPerPixel;
    for (LONG line = part.top; line < part.bottom; ++line, target += surface.pitchBytes) {
        if (line > part.top && scale > 1 && (line - viewport.top) % scale != 0) {
            std::memcpy(target, target - surface.pitchBytes, bytes);
            continue;
        }
        ShowRow(picture, viewport, static_cast<int>(line), static_cast<int>(part.left), row);
        write(row, target);
    }
}

void WidenRow(std::span<const std::uint16_t> row, PixelShifts shifts, std::span<std::uint32_t> target)
{
    std::ranges::transform(row, target.begin(), [shifts](std::uint32_t pixel) {
        const std::uint32_t red = pixel >> 11;
        const std::uint32_t green = (pixel >> 5) & 0x3F;
        const std::uint32_t blue = pixel & 0x1F;
        return (((red << 3) | (red >> 2)) << shifts.red) | (((green << 2) | (green >> 4)) << shifts.green) |
               (((blue << 3) | (blue >> 2)) << shifts.blue);
    });
}

} // namespace cardsong::host
