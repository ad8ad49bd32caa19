// A bitmap of the device's screen format whose pixels are at hand, its first row on top.
#pragma once

#include "platform/ce.h"

#include <cstdint>

namespace cardsong::imaging {

struct Rgb565Section {
    HBITMAP bitmap = nullptr; // owned by whoever asked for it
    std::uint16_t* pixels = nullptr;
    std::size_t rowPixels = 0; // rows end on four bytes

    std::uint16_t* Row(std::size_t y) const { return pixels + y * rowPixels; }
};

// Black; without a bitmap when memory is short.
inline Rgb565Section MakeRgb565Section(int widthPx, int heightPx)
{
    struct {
        BITMAPINFOHEADER header;
        DWORD masks[3];
    } info{};
    info.header.biSize = sizeof info.header;
    info.header.biWidth = widthPx;
    info.header.biHeight = -heightPx;
    info.header.biPlanes = 1;
    info.header.biBitCount = 16;
    info.header.biCompression = BI_BITFIELDS;
    info.masks[0] = 0xF800;
    info.masks[1] = 0x07E0;
    info.masks[2] = 0x001F;
    void* bits = nullptr;
    const HBITMAP bitmap =
        CreateDIBSection(nullptr, reinterpret_cast<const BITMAPINFO*>(&info), DIB_RGB_COLORS, &bits, nullptr, 0);
    return { bitmap, static_cast<std::uint16_t*>(bits), (static_cast<std::size_t>(widthPx) + 1) / 2 * 2 };
}

} // namespace cardsong::imaging
