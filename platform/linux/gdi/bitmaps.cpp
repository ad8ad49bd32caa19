#include "platform/linux/gdi/bitmaps.h"

#include "platform/linux/gdi/context.h"
#include "platform/screen_size.h"

#include <cstdlib>
#include <cstring>

namespace cardsong::gdi {

std::int64_t PaddedRow(std::int64_t widthPx)
{
    return (widthPx + 1) & ~std::int64_t{ 1 };
}

namespace {

// A paint makes and drops three pictures of the screen's size. Fresh memory of that size comes from the kernel page by
// page, which costs more than drawing on it. So the last blocks are kept, as many as one paint needs.
constexpr std::size_t kKeptBlocks = 4;
constexpr std::size_t kMaxKeptWords = kScreenWidthPx * kScreenHeightPx;

std::vector<PixelMemory>& KeptBlocks()
{
    static auto* blocks = new std::vector<PixelMemory>;
    return *blocks;
}

PixelMemory TakeKeptBlock(std::size_t words)
{
    auto& blocks = KeptBlocks();
    const auto fitting = std::find_if(blocks.begin(), blocks.end(),
                                      [words](const auto& block) { return block.get_deleter().words == words; });
    if (fitting == blocks.end())
        return nullptr;
    PixelMemory block = std::move(*fitting);
    blocks.erase(fitting);
    return block;
}

} // namespace

void RecyclePixels::operator()(std::uint16_t* pixels) const
{
    auto& blocks = KeptBlocks();
    constexpr std::size_t kSmallWords = 8192; // the heap is quick enough with these
    if (words > kMaxKeptWords || words < kSmallWords) {
        std::free(pixels);
        return;
    }
    if (blocks.size() == kKeptBlocks) {
        std::free(blocks.front().release());
        blocks.erase(blocks.begin());
    }
    blocks.emplace_back(pixels, *this);
}

PixelMemory AllocatePixels(std::int64_t rowWords, std::int64_t rows, FirstPixels first)
{
    if (rowWords <= 0 || rows <= 0 || rows > kMaxBitmapPixels / rowWords)
        return nullptr;
    const auto words = static_cast<std::size_t>(rowWords * rows);
    if (PixelMemory kept = TakeKeptBlock(words)) {
        if (first == FirstPixels::Black)
            std::fill_n(kept.get(), words, std::uint16_t{ 0 });
        return kept;
    }
    return PixelMemory(static_cast<std::uint16_t*>(std::calloc(words, sizeof(std::uint16_t))), RecyclePixels{ words });
}

std::unique_ptr<Bitmap> MakeBitmap(int widthPx, int heightPx)
{
    const std::int64_t rowWords = PaddedRow(widthPx);
    auto pixels = widthPx > 0 ? AllocatePixels(rowWords, heightPx, FirstPixels::Black) : nullptr;
    if (!pixels)
        return nullptr;
    auto bitmap = std::make_unique<Bitmap>();
    bitmap->surface = { pixels.get(), rowWords, widthPx, heightPx };
    bitmap->rowBytes = widthPx * 2;
    bitmap->pixels = std::move(pixels);
    return bitmap;
}

namespace {

// The player's pictures are RGB565 with the three masks behind the header; other layouts are refused.
bool DescribesRgb565(const BITMAPINFO& info)
{
    const BITMAPINFOHEADER& header = info.bmiHeader;
    if (header.biSize < sizeof(BITMAPINFOHEADER) || header.biPlanes != 1 || header.biBitCount != 16 ||
        header.biCompression != BI_BITFIELDS)
        return false;
    constexpr DWORD kMasks[3] = { 0xF800, 0x07E0, 0x001F };
    return std::memcmp(reinterpret_cast<const BYTE*>(&info) + sizeof(BITMAPINFOHEADER), kMasks, sizeof(kMasks)) == 0;
}

std::unique_ptr<Bitmap> MakeSection(LONG widthPx, LONG signedHeight)
{
    const std::int64_t height = std::abs(static_cast<std::int64_t>(signedHeight));
    const std::int64_t rowWords = PaddedRow(widthPx);
    auto pixels = widthPx > 0 ? AllocatePixels(rowWords, height, FirstPixels::Black) : nullptr;
    if (!pixels)
        return nullptr;
    auto bitmap = std::make_unique<Bitmap>();
    const bool topDown = signedHeight < 0;
    std::uint16_t* top = topDown ? pixels.get() : pixels.get() + (height - 1) * rowWords;
    bitmap->surface = { top, topDown ? rowWords : -rowWords, widthPx, static_cast<int>(height) };
    bitmap->rowBytes = static_cast<LONG>(rowWords * 2);
    bitmap->pixels = std::move(pixels);
    bitmap->isSection = true;
    return bitmap;
}

} // namespace

} // namespace cardsong::gdi

using namespace cardsong::gdi;

HBITMAP CreateCompatibleBitmap(HDC like, int widthPx, int heightPx)
{
    const std::lock_guard lock(RoomLock());
    const Context* context = Find<Context>(like);
    if (context == nullptr)
        return nullptr;
    if (widthPx == 0 || heightPx == 0)
        return static_cast<HBITMAP>(DefaultBitmap());
    auto bitmap = MakeBitmap(widthPx, heightPx);
    if (bitmap && context->isMonochrome) {
        bitmap->isMonochrome = true;
        bitmap->rowBytes = (widthPx + 15) / 16 * 2;
    }
    return bitmap ? static_cast<HBITMAP>(AddObject(std::move(bitmap))) : nullptr;
}

HBITMAP CreateDIBSection(HDC, const BITMAPINFO* info, UINT usage, void** bits, HANDLE section, DWORD)
{
    if (bits != nullptr)
        *bits = nullptr;
    if (info == nullptr || usage != DIB_RGB_COLORS || section != nullptr || !DescribesRgb565(*info))
        return nullptr;
    const std::lock_guard lock(RoomLock());
    auto bitmap = MakeSection(info->bmiHeader.biWidth, info->bmiHeader.biHeight);
    if (!bitmap)
        return nullptr;
    std::uint16_t* pixels = bitmap->pixels.get();
    const HANDLE handle = AddObject(std::move(bitmap));
    if (handle != nullptr && bits != nullptr)
        *bits = pixels;
    return static_cast<HBITMAP>(handle);
}

COLORREF GetPixel(HDC handle, int x, int y)
{
    const std::lock_guard lock(RoomLock());
    const Context* context = Find<Context>(handle);
    if (context == nullptr)
        return CLR_INVALID;
    const RECT asked = RectOf(RangeOf(x, 1), RangeOf(y, 1));
    const RECT pixel = ToTarget(*context, asked);
    for (const RECT& visible : context->visible) {
        if (!IsEmpty(Intersect(pixel, visible)))
            return ColorFromPixel(*context->target.At(pixel.left, pixel.top));
    }
    return CLR_INVALID;
}
