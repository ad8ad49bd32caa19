#include "platform/linux/gdi/context.h"

#include "platform/screen_size.h"

#include <utility>

namespace cardsong::gdi {

HDC AddContext(std::unique_ptr<Context> context)
{
    Context& made = *context;
    made.brush.Exchange(StockObject(WHITE_BRUSH));
    made.pen.Exchange(StockObject(BLACK_PEN));
    made.font.Exchange(StockObject(SYSTEM_FONT));
    return static_cast<HDC>(AddObject(std::move(context)));
}

void ReduceToBlackAndWhite(const Surface& surface, const RECT& part)
{
    const std::uint16_t white = PixelFromColor(RGB(255, 255, 255));
    for (LONG y = part.top; y < part.bottom; ++y) {
        for (LONG x = part.left; x < part.right; ++x) {
            if (*surface.At(x, y) != white)
                *surface.At(x, y) = 0;
        }
    }
}

RECT ToTarget(const Context& context, const RECT& rect)
{
    const auto shift = [](LONG value, LONG by) { return static_cast<std::int64_t>(value) + by; };
    const RECT moved = RectOf({ shift(rect.left, context.origin.x), shift(rect.right, context.origin.x) },
                              { shift(rect.top, context.origin.y), shift(rect.bottom, context.origin.y) });
    return Intersect(moved, context.target.Bounds());
}

namespace {

void DrawOn(Context& context, const Surface& surface)
{
    context.target = surface;
    context.visible.assign(1, surface.Bounds());
}

HANDLE SelectBitmap(Context& context, HANDLE handle, Bitmap& bitmap)
{
    const bool isDefault = handle == DefaultBitmap();
    if (context.isScreen || (!isDefault && handle != context.bitmap.Get() && bitmap.selections > 0))
        return nullptr;
    context.isMonochrome = bitmap.isMonochrome;
    DrawOn(context, isDefault ? Surface{ context.ownPixel, 2, 1, 1 } : bitmap.surface);
    return context.bitmap.Exchange(handle);
}

} // namespace

} // namespace cardsong::gdi

using namespace cardsong::gdi;

HDC CreateCompatibleDC(HDC like)
{
    const std::lock_guard lock(RoomLock());
    if (like != nullptr && Find<Context>(like) == nullptr)
        return nullptr;
    auto context = std::make_unique<Context>();
    context->bitmap.Exchange(DefaultBitmap());
    context->isMonochrome = true;
    DrawOn(*context, { context->ownPixel, 2, 1, 1 });
    return AddContext(std::move(context));
}

BOOL DeleteDC(HDC handle)
{
    const std::lock_guard lock(RoomLock());
    return Find<Context>(handle) != nullptr ? DeleteOrMark(handle) : FALSE;
}

HGDIOBJ SelectObject(HDC handle, HGDIOBJ chosen)
{
    const std::lock_guard lock(RoomLock());
    Context* context = Find<Context>(handle);
    Object* object = FindObject(chosen);
    if (context == nullptr || object == nullptr)
        return nullptr;
    switch (object->kind) {
    case ObjectKind::Bitmap: return SelectBitmap(*context, chosen, static_cast<Bitmap&>(*object));
    case ObjectKind::Brush: return context->brush.Exchange(chosen);
    case ObjectKind::Pen: return context->pen.Exchange(chosen);
    case ObjectKind::Font: return context->font.Exchange(chosen);
    case ObjectKind::Context: break;
    }
    return nullptr;
}

int GetDeviceCaps(HDC handle, int index)
{
    const std::lock_guard lock(RoomLock());
    if (Find<Context>(handle) == nullptr)
        return 0;
    constexpr int kDotsPerInch = 96;
    switch (index) {
    case LOGPIXELSX:
    case LOGPIXELSY: return kDotsPerInch;
    case BITSPIXEL: return 16;
    case HORZRES: return kScreenWidthPx;
    case VERTRES: return kScreenHeightPx;
    default: return 0;
    }
}

COLORREF SetTextColor(HDC handle, COLORREF color)
{
    const std::lock_guard lock(RoomLock());
    Context* context = Find<Context>(handle);
    return context != nullptr ? std::exchange(context->textColor, color) : CLR_INVALID;
}

COLORREF SetBkColor(HDC handle, COLORREF color)
{
    const std::lock_guard lock(RoomLock());
    Context* context = Find<Context>(handle);
    return context != nullptr ? std::exchange(context->backColor, color) : CLR_INVALID;
}

int SetBkMode(HDC handle, int mode)
{
    const std::lock_guard lock(RoomLock());
    Context* context = Find<Context>(handle);
    if (context == nullptr || (mode != TRANSPARENT && mode != OPAQUE))
        return 0;
    return std::exchange(context->backMode, mode);
}

// Every call draws before it returns.
BOOL GdiFlush()
{
    return TRUE;
}
