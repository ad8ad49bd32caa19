#include "platform/linux/gdi/screen.h"

#include "platform/linux/gdi/context.h"
#include "platform/screen_size.h"

#include <atomic>

namespace cardsong::gdi {
namespace {

constexpr std::size_t kScreenPixels = static_cast<std::size_t>(kScreenWidthPx) * kScreenHeightPx;
alignas(4) std::uint16_t g_screenPixels[kScreenPixels];
std::atomic<std::uint64_t> g_screenGeneration{ 0 };
thread_local bool t_hasDrawnOnScreen = false;

Surface ScreenSurface()
{
    return { g_screenPixels, kScreenWidthPx, kScreenWidthPx, kScreenHeightPx };
}

void Place(Context& context, POINT origin, const cairo_region_t* region)
{
    context.origin = origin;
    context.visible.clear();
    const int count = region != nullptr ? cairo_region_num_rectangles(region) : 0;
    for (int i = 0; i < count; ++i) {
        cairo_rectangle_int_t box;
        cairo_region_get_rectangle(region, i, &box);
        const RECT part = Intersect({ box.x, box.y, box.x + box.width, box.y + box.height }, context.target.Bounds());
        if (!IsEmpty(part))
            context.visible.push_back(part);
    }
}

Context* FindScreenContext(HDC handle)
{
    Context* context = Find<Context>(handle);
    return context != nullptr && context->isScreen ? context : nullptr;
}

} // namespace

void NoteScreenDrawn()
{
    g_screenGeneration.fetch_add(1, std::memory_order_release);
    t_hasDrawnOnScreen = true;
}

HDC CreateScreenContext(POINT origin, const cairo_region_t* visible)
{
    const std::lock_guard lock(RoomLock());
    auto context = std::make_unique<Context>();
    context->isScreen = true;
    context->target = ScreenSurface();
    Place(*context, origin, visible);
    return AddContext(std::move(context));
}

void UpdateScreenContext(HDC handle, POINT origin, const cairo_region_t* visible)
{
    const std::lock_guard lock(RoomLock());
    if (Context* context = FindScreenContext(handle))
        Place(*context, origin, visible);
}

void DestroyScreenContext(HDC handle)
{
    const std::lock_guard lock(RoomLock());
    if (FindScreenContext(handle) != nullptr)
        RemoveObject(handle);
}

void CopyScreen(std::span<std::uint16_t> pixels)
{
    const std::lock_guard lock(RoomLock());
    std::copy_n(g_screenPixels, std::min(pixels.size(), kScreenPixels), pixels.begin());
}

bool UpdateScreenCopy(std::span<std::uint16_t> pixels)
{
    const std::lock_guard lock(RoomLock());
    bool differed = false;
    for (std::size_t row = 0; row < kScreenPixels; row += kScreenWidthPx) {
        const std::uint16_t* const shown = g_screenPixels + row;
        const auto copy = pixels.subspan(row, kScreenWidthPx);
        if (std::equal(copy.begin(), copy.end(), shown))
            continue;
        std::copy_n(shown, kScreenWidthPx, copy.begin());
        differed = true;
    }
    return differed;
}

std::uint64_t ScreenGeneration()
{
    return g_screenGeneration.load(std::memory_order_acquire);
}

bool HasDrawnOnScreen()
{
    return t_hasDrawnOnScreen;
}

void ClearScreen()
{
    const std::lock_guard lock(RoomLock());
    std::fill_n(g_screenPixels, kScreenPixels, std::uint16_t{ 0 });
    NoteScreenDrawn();
}

} // namespace cardsong::gdi
