// A memory context on an RGB565 section whose words a test reads and writes directly, row 0 on top.
#pragma once

#include "platform/ce.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace cardsong::test {

struct Rgb565Info {
    BITMAPINFOHEADER header;
    DWORD masks[3];
    const BITMAPINFO* Get() const { return reinterpret_cast<const BITMAPINFO*>(this); }
};

// Negative height: the first row in memory is the upper one.
inline Rgb565Info DescribeRgb565(LONG widthPx, LONG heightPx)
{
    Rgb565Info info{};
    info.header.biSize = sizeof(BITMAPINFOHEADER);
    info.header.biWidth = widthPx;
    info.header.biHeight = heightPx;
    info.header.biPlanes = 1;
    info.header.biBitCount = 16;
    info.header.biCompression = BI_BITFIELDS;
    info.masks[0] = 0xF800;
    info.masks[1] = 0x07E0;
    info.masks[2] = 0x001F;
    return info;
}

class Canvas {
public:
    Canvas(int widthPx, int heightPx) : m_widthPx(widthPx), m_heightPx(heightPx), m_dc(CreateCompatibleDC(nullptr))
    {
        const Rgb565Info info = DescribeRgb565(widthPx, -heightPx);
        void* bits = nullptr;
        m_bitmap = CreateDIBSection(m_dc, info.Get(), DIB_RGB_COLORS, &bits, nullptr, 0);
        m_words = static_cast<std::uint16_t*>(bits);
        m_before = SelectObject(m_dc, m_bitmap);
    }
    ~Canvas()
    {
        SelectObject(m_dc, m_before);
        DeleteObject(m_bitmap);
        DeleteDC(m_dc);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    HDC Dc() const { return m_dc; }
    HBITMAP Handle() const { return m_bitmap; }
    std::uint16_t& At(int x, int y) { return m_words[y * ((m_widthPx + 1) & ~1) + x]; }
    // All pixels, row after row, without padding.
    std::vector<std::uint16_t> Pixels()
    {
        std::vector<std::uint16_t> pixels;
        for (int y = 0; y < m_heightPx; ++y) {
            for (int x = 0; x < m_widthPx; ++x)
                pixels.push_back(At(x, y));
        }
        return pixels;
    }
    void Set(const std::vector<std::uint16_t>& pixels)
    {
        std::size_t next = 0;
        for (int y = 0; y < m_heightPx; ++y) {
            for (int x = 0; x < m_widthPx; ++x)
                At(x, y) = pixels.at(next++);
        }
    }
    void Fill(std::uint16_t word)
    {
        Set(std::vector<std::uint16_t>(static_cast<std::size_t>(m_widthPx) * static_cast<std::size_t>(m_heightPx),
                                       word));
    }
    // The smallest rectangle around all pixels that differ from `ground`; empty when there is none.
    RECT Drawn(std::uint16_t ground)
    {
        RECT box = { m_widthPx, m_heightPx, 0, 0 };
        for (int y = 0; y < m_heightPx; ++y) {
            for (int x = 0; x < m_widthPx; ++x) {
                if (At(x, y) == ground)
                    continue;
                box.left = x < box.left ? x : box.left;
                box.top = y < box.top ? y : box.top;
                box.right = x + 1 > box.right ? x + 1 : box.right;
                box.bottom = y + 1 > box.bottom ? y + 1 : box.bottom;
            }
        }
        return box.right == 0 ? RECT{ 0, 0, 0, 0 } : box;
    }

private:
    int m_widthPx;
    int m_heightPx;
    HDC m_dc;
    HBITMAP m_bitmap = nullptr;
    HGDIOBJ m_before = nullptr;
    std::uint16_t* m_words = nullptr;
};

} // namespace cardsong::test
