#include "platform/linux/gdi/bitmaps.h"
#include "platform/linux/gdi/context.h"

#include <cstring>

namespace cardsong::gdi {
namespace {

LONG Remainder(std::int64_t value, std::int64_t divisor)
{
    const std::int64_t rest = value % divisor;
    return static_cast<LONG>(rest < 0 ? rest + divisor : rest);
}

// The pattern starts at the context's 0,0 whatever is filled. A pattern as wide as the fill is one copy a row.
void FillPattern(const Context& context, const RECT& part, const Surface& pattern)
{
    const LONG firstX = Remainder(static_cast<std::int64_t>(part.left) - context.origin.x, pattern.widthPx);
    LONG patternY = Remainder(static_cast<std::int64_t>(part.top) - context.origin.y, pattern.heightPx);
    for (LONG y = part.top; y < part.bottom; ++y) {
        LONG patternX = firstX;
        for (LONG x = part.left; x < part.right;) {
            const LONG count = std::min<LONG>(pattern.widthPx - patternX, part.right - x);
            std::memcpy(context.target.At(x, y), pattern.At(patternX, patternY), static_cast<std::size_t>(count) * 2);
            x += count;
            patternX = 0;
        }
        patternY = patternY + 1 == pattern.heightPx ? 0 : patternY + 1;
    }
}

} // namespace
} // namespace cardsong::gdi

using namespace cardsong::gdi;

HBRUSH CreateSolidBrush(COLORREF color)
{
    const std::lock_guard lock(RoomLock());
    auto brush = std::make_unique<Brush>();
    brush->pixel = PixelFromColor(color);
    return static_cast<HBRUSH>(AddObject(std::move(brush)));
}

HBRUSH CreatePatternBrush(HBITMAP handle)
{
    const std::lock_guard lock(RoomLock());
    const Bitmap* bitmap = Find<Bitmap>(handle);
    if (bitmap == nullptr || !bitmap->pixels)
        return nullptr;
    const Surface& from = bitmap->surface;
    auto brush = std::make_unique<Brush>();
    brush->patternPixels = AllocatePixels(from.widthPx, from.heightPx, FirstPixels::Whatever);
    if (!brush->patternPixels)
        return nullptr;
    brush->pattern = { brush->patternPixels.get(), from.widthPx, from.widthPx, from.heightPx };
    for (int y = 0; y < from.heightPx; ++y)
        std::copy_n(from.At(0, y), from.widthPx, brush->pattern.At(0, y));
    return static_cast<HBRUSH>(AddObject(std::move(brush)));
}

HBRUSH GetSysColorBrush(int index)
{
    const std::lock_guard lock(RoomLock());
    return static_cast<HBRUSH>(SystemColorBrush(index));
}

int FillRect(HDC handle, const RECT* rect, HBRUSH brushHandle)
{
    const std::lock_guard lock(RoomLock());
    const Context* context = Find<Context>(handle);
    if (rect == nullptr)
        return 0;
    if (context == nullptr)
        return 1; // the call tells of no dead handle
    const Brush* brush = Find<Brush>(brushHandle);
    if (brush == nullptr)
        brush = Find<Brush>(context->brush.Get());
    if (brush == nullptr || brush->isHollow)
        return 1;
    ForEachVisiblePart(*context, ToTarget(*context, *rect), [&](const RECT& part) {
        if (brush->patternPixels)
            FillPattern(*context, part, brush->pattern);
        else
            FillPixels(context->target, part, brush->pixel);
    });
    return 1;
}
