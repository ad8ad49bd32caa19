#include "platform/windows/gdi/rgb565_section.h"

namespace cardsong::gdi {

Rgb565Section MakeRgb565Section(UINT widthPx, UINT heightPx)
{
    struct {
        BITMAPINFOHEADER header;
        DWORD masks[3];
    } info{};
    info.header.biSize = sizeof info.header;
    info.header.biWidth = static_cast<LONG>(widthPx);
    info.header.biHeight = -static_cast<LONG>(heightPx);
    info.header.biPlanes = 1;
    info.header.biBitCount = 16;
    info.header.biCompression = BI_BITFIELDS;
    info.masks[0] = 0xF800;
    info.masks[1] = 0x07E0;
    info.masks[2] = 0x001F;
    void* bits = nullptr;
    const HBITMAP bitmap =
        CreateDIBSection(nullptr, reinterpret_cast<const BITMAPINFO*>(&info), DIB_RGB_COLORS, &bits, nullptr, 0);
    return { bitmap, static_cast<std::uint16_t*>(bits), (std::size_t{ widthPx } + 1) / 2 * 2 };
}

} // namespace cardsong::gdi
