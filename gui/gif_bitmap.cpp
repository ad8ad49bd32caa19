#include "gui/gif_bitmap.h"

#include "common/gdi_handles.h"
#include "gif/gif_pixels.h"
#include "gui/gif_decoder.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr COLORREF kSkinBackground = RGB(255, 255, 255);

// A bitmap description with the three colour masks that a 16-bit format needs behind its header.
struct Rgb565Info {
    BITMAPINFOHEADER header;
    DWORD redMask;
    DWORD greenMask;
    DWORD blueMask;
};

} // namespace

HBITMAP CreateRgb565Dib(int widthPx, int heightPx, std::uint16_t** bits)
{
    *bits = nullptr;
    if (widthPx <= 0 || heightPx <= 0 ||
        !IsPixelCountAllowed(static_cast<std::uint32_t>(widthPx), static_cast<std::uint32_t>(heightPx)))
        return nullptr;
    Rgb565Info info = {};
    info.header.biSize = sizeof(info.header);
    info.header.biWidth = widthPx;
    info.header.biHeight = -heightPx; // top-down
    info.header.biPlanes = 1;
    info.header.biBitCount = 16;
    info.header.biCompression = BI_BITFIELDS;
    info.redMask = 0xF800;
    info.greenMask = 0x07E0;
    info.blueMask = 0x001F;
    void* memory = nullptr;
    UniqueBitmap bitmap(
        CreateDIBSection(nullptr, reinterpret_cast<const BITMAPINFO*>(&info), DIB_RGB_COLORS, &memory, nullptr, 0));
    if (!bitmap || memory == nullptr)
        return nullptr;
    *bits = static_cast<std::uint16_t*>(memory);
    return bitmap.Release();
}

void CopyFramePixels(std::span<const std::uint16_t> canvas, std::uint16_t* bits, int widthPx, int heightPx)
{
    const auto width = static_cast<std::size_t>(widthPx);
    const auto height = static_cast<std::size_t>(heightPx);
    if (canvas.size() != width * height)
        return;
    if (width % 2 == 0) {
        std::ranges::copy(canvas, bits);
        return;
    }
    for (std::size_t y = 0; y < height; ++y)
        std::ranges::copy(canvas.subspan(y * width, width), bits + y * (width + 1));
}

HBITMAP LoadGifBitmap(LPCWSTR path)
{
    GifDecoder decoder(path, kSkinBackground);
    if (!decoder.Open())
        return nullptr;
    std::uint16_t widthPx = 0;
    std::uint16_t heightPx = 0;
    std::uint32_t frameCount = 0;
    decoder.GetSize(widthPx, heightPx, frameCount);
    std::uint16_t* bits = nullptr;
    UniqueBitmap bitmap(CreateRgb565Dib(widthPx, heightPx, &bits));
    if (!bitmap)
        return nullptr;
    const GifFrame* frame = decoder.DecodeNextFrame();
    if (frame == nullptr)
        return nullptr;
    CopyFramePixels(frame->canvas, bits, widthPx, heightPx);
    return bitmap.Release();
}
