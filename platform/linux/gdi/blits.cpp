#include "platform/linux/gdi/bitmaps.h"
#include "platform/linux/gdi/context.h"
#include "platform/linux/gdi/keyed_row.h"

#include <cstring>
#include <optional>
#include <utility>
#include <vector>

namespace cardsong::gdi {
namespace {

// One axis of a blit: which source pixels each target pixel is made of, all in the surfaces' own pixels. The two lines
// are stretched to one length. Each pixel of the line with more pixels then belongs to the pixel of the other in which
// its middle lies; between two, to the lower one.
class Axis {
public:
    Axis(std::int64_t target, std::int64_t targetExtent, std::int64_t source, std::int64_t sourceExtent)
        : m_target(RangeOf(target, targetExtent)), m_source(RangeOf(source, sourceExtent)),
          m_isTargetMirrored(targetExtent < 0), m_isSourceMirrored(sourceExtent < 0)
    {
    }
    Range Target() const { return m_target; }
    bool IsCopy() const { return TargetLength() == SourceLength() && m_isTargetMirrored == m_isSourceMirrored; }
    std::int64_t Offset() const { return m_source.low - m_target.low; }

    // All source pixels that fall on target pixel `at`. As on the real system, a line shrunk to one pixel leaves its
    // last pixel out, unless it is mirrored.
    Range Merged(std::int64_t at) const
    {
        const std::uint64_t target = m_isTargetMirrored ? Index(m_target.high - 1 - at) : Index(at - m_target.low);
        const std::uint64_t from = IsShrunk() ? FirstOf(target) : MiddleOf(target);
        std::uint64_t to = IsShrunk() ? FirstOf(target + 1) : from + 1;
        if (TargetLength() == 1 && SourceLength() > 1 && !m_isTargetMirrored && !m_isSourceMirrored)
            --to;
        const auto low = static_cast<std::int64_t>(from);
        const auto high = static_cast<std::int64_t>(to);
        return m_isSourceMirrored ? Range{ m_source.high - high, m_source.high - low }
                                  : Range{ m_source.low + low, m_source.low + high };
    }

    // The one source pixel that stands for target pixel `at` where pixels are not joined: the last of them.
    std::int64_t Standing(std::int64_t at) const
    {
        const Range merged = Merged(at);
        return m_isSourceMirrored ? merged.low : merged.high - 1;
    }

private:
    // Without sign, since twice a product of two extents takes 64 bits.
    static std::uint64_t Index(std::int64_t value) { return static_cast<std::uint64_t>(value); }
    std::uint64_t TargetLength() const { return Index(m_target.high - m_target.low); }
    std::uint64_t SourceLength() const { return Index(m_source.high - m_source.low); }
    bool IsShrunk() const { return SourceLength() > TargetLength(); }
    // The first source pixel whose middle lies beyond the start of target pixel `index`.
    std::uint64_t FirstOf(std::uint64_t index) const { return (2 * index * SourceLength() / TargetLength() + 1) / 2; }
    // The source pixel in which the middle of target pixel `index` lies.
    std::uint64_t MiddleOf(std::uint64_t index) const
    {
        return ((2 * index + 1) * SourceLength() - 1) / (2 * TargetLength());
    }

    Range m_target;
    Range m_source;
    bool m_isTargetMirrored;
    bool m_isSourceMirrored;
};

struct Blit {
    const Context& target;
    Surface source;
    Axis x;
    Axis y;

    bool IsCopy() const { return x.IsCopy() && y.IsCopy(); }
};

RECT CutTarget(const Blit& blit)
{
    return Intersect(RectOf(blit.x.Target(), blit.y.Target()), blit.target.target.Bounds());
}

// Target pixels of an unscaled blit that have a source pixel.
RECT CutToSource(const Blit& blit)
{
    const Range sourceX = { -blit.x.Offset(), blit.source.widthPx - blit.x.Offset() };
    const Range sourceY = { -blit.y.Offset(), blit.source.heightPx - blit.y.Offset() };
    return Intersect(CutTarget(blit), RectOf(sourceX, sourceY));
}

template <typename CopyRow>
void CopyRows(const Blit& blit, CopyRow copyRow)
{
    const Surface& target = blit.target.target;
    ForEachVisiblePart(blit.target, CutToSource(blit), [&](const RECT& part) {
        const auto count = static_cast<std::size_t>(part.right - part.left);
        const int sourceX = static_cast<int>(part.left + blit.x.Offset());
        for (LONG y = part.top; y < part.bottom; ++y)
            copyRow(target.At(part.left, y), blit.source.At(sourceX, static_cast<int>(y + blit.y.Offset())), count);
    });
}

// ANDs the source pixels of one target pixel; nothing when none of them lies within the source.
std::optional<std::uint16_t> Merge(const Surface& source, Range x, Range y)
{
    const RECT box = Intersect(RectOf(x, y), source.Bounds());
    if (IsEmpty(box))
        return std::nullopt;
    unsigned merged = 0xFFFF;
    for (LONG row = box.top; row < box.bottom; ++row) {
        for (LONG column = box.left; column < box.right; ++column)
            merged &= *source.At(column, row);
    }
    return static_cast<std::uint16_t>(merged);
}

void StretchMerging(const Blit& blit)
{
    ForEachVisiblePart(blit.target, CutTarget(blit), [&](const RECT& part) {
        std::vector<Range> columns;
        for (LONG x = part.left; x < part.right; ++x)
            columns.push_back(blit.x.Merged(x));
        for (LONG y = part.top; y < part.bottom; ++y) {
            const Range rows = blit.y.Merged(y);
            std::uint16_t* target = blit.target.target.At(part.left, y);
            for (const Range& column : columns) {
                if (const auto pixel = Merge(blit.source, column, rows))
                    *target = *pixel;
                ++target;
            }
        }
    });
}

void StretchKeyed(const Blit& blit, std::uint16_t key)
{
    ForEachVisiblePart(blit.target, CutTarget(blit), [&](const RECT& part) {
        std::vector<std::int64_t> columns;
        for (LONG x = part.left; x < part.right; ++x)
            columns.push_back(blit.x.Standing(x));
        for (LONG y = part.top; y < part.bottom; ++y) {
            const std::int64_t sourceY = blit.y.Standing(y);
            if (sourceY < 0 || sourceY >= blit.source.heightPx)
                continue;
            const std::span source(blit.source.At(0, static_cast<int>(sourceY)),
                                   static_cast<std::size_t>(blit.source.widthPx));
            StretchKeyedRow(blit.target.target.At(part.left, y), source, columns, key);
        }
    });
}

// A surface copied onto itself is read from here, whatever way the two places overlap.
PixelMemory Duplicate(Surface& surface)
{
    auto pixels = AllocatePixels(surface.widthPx, surface.heightPx, FirstPixels::Whatever);
    if (!pixels)
        return nullptr;
    for (int y = 0; y < surface.heightPx; ++y)
        std::copy_n(surface.At(0, y), surface.widthPx, pixels.get() + static_cast<std::ptrdiff_t>(y) * surface.widthPx);
    surface.top = pixels.get();
    surface.rowWords = surface.widthPx;
    return pixels;
}

// The two rectangles of a call, each in the coordinates of its context.
struct Places {
    int x, y, widthPx, heightPx;
    int sourceX, sourceY, sourceWidthPx, sourceHeightPx;
};

// Finds both contexts, prepares the source and runs `draw(blit)`, unless a rectangle is empty; false when a handle is
// dead or memory is short.
template <typename Draw>
bool WithBlit(HDC target, HDC source, const Places& at, Draw draw)
{
    const std::lock_guard lock(RoomLock());
    const Context* to = Find<Context>(target);
    const Context* from = Find<Context>(source);
    if (to == nullptr || from == nullptr)
        return false;
    Surface pixels = from->target;
    PixelMemory copy;
    if (pixels.top == to->target.top) {
        copy = Duplicate(pixels);
        if (!copy)
            return false;
    }
    if (at.widthPx == 0 || at.heightPx == 0 || at.sourceWidthPx == 0 || at.sourceHeightPx == 0)
        return true;
    draw(Blit{ *to,
               pixels,
               { std::int64_t{ at.x } + to->origin.x, at.widthPx, std::int64_t{ at.sourceX } + from->origin.x,
                 at.sourceWidthPx },
               { std::int64_t{ at.y } + to->origin.y, at.heightPx, std::int64_t{ at.sourceY } + from->origin.y,
                 at.sourceHeightPx } });
    return true;
}

} // namespace
} // namespace cardsong::gdi

using namespace cardsong::gdi;

BOOL BitBlt(HDC target, int x, int y, int widthPx, int heightPx, HDC source, int sourceX, int sourceY, DWORD operation)
{
    return StretchBlt(target, x, y, widthPx, heightPx, source, sourceX, sourceY, widthPx, heightPx, operation);
}

BOOL StretchBlt(HDC target, int x, int y, int widthPx, int heightPx, HDC source, int sourceX, int sourceY,
                int sourceWidthPx, int sourceHeightPx, DWORD operation)
{
    if (operation != SRCCOPY)
        return FALSE;
    const Places at = { x, y, widthPx, heightPx, sourceX, sourceY, sourceWidthPx, sourceHeightPx };
    return WithBlit(target, source, at, [](const Blit& blit) {
        if (!blit.IsCopy()) {
            StretchMerging(blit);
            return;
        }
        CopyRows(blit, [](std::uint16_t* out, const std::uint16_t* in, std::size_t count) {
            std::memcpy(out, in, count * sizeof(std::uint16_t));
        });
    });
}

BOOL TransparentImage(HDC target, int x, int y, int widthPx, int heightPx, HDC source, int sourceX, int sourceY,
                      int sourceWidthPx, int sourceHeightPx, COLORREF key)
{
    if (widthPx < 0 || heightPx < 0 || sourceWidthPx < 0 || sourceHeightPx < 0)
        return FALSE;
    const std::uint16_t keyPixel = PixelFromColor(key);
    const Places at = { x, y, widthPx, heightPx, sourceX, sourceY, sourceWidthPx, sourceHeightPx };
    return WithBlit(target, source, at, [keyPixel](const Blit& blit) {
        if (!blit.IsCopy()) {
            StretchKeyed(blit, keyPixel);
            return;
        }
        CopyRows(blit, [keyPixel](std::uint16_t* out, const std::uint16_t* in, std::size_t count) {
            CopyKeyedRow(out, in, count, keyPixel);
        });
    });
}
