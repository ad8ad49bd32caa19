#include "tests/platform/gdi/canvas.h"

#include <gtest/gtest.h>

#include <cstdint>

using cardsong::test::Canvas;
using cardsong::test::DescribeRgb565;

namespace {

HBITMAP CreateSection(const cardsong::test::Rgb565Info& info, void** bits)
{
    return CreateDIBSection(nullptr, info.Get(), DIB_RGB_COLORS, bits, nullptr, 0);
}

TEST(GdiBitmaps, ATopDownSectionHasItsUpperRowFirst)
{
    Canvas canvas(2, 2);
    canvas.Set({ 0xF800, 0x07E0, 0x001F, 0xFFFF });
    EXPECT_EQ(GetPixel(canvas.Dc(), 0, 0), RGB(255, 0, 0));
    EXPECT_EQ(GetPixel(canvas.Dc(), 1, 0), RGB(0, 255, 0));
    EXPECT_EQ(GetPixel(canvas.Dc(), 0, 1), RGB(0, 0, 255));
    EXPECT_EQ(GetPixel(canvas.Dc(), 1, 1), RGB(255, 255, 255));
}

TEST(GdiBitmaps, ABottomUpSectionHasItsLowerRowFirst)
{
    void* bits = nullptr;
    const HBITMAP bitmap = CreateSection(DescribeRgb565(1, 2), &bits);
    ASSERT_NE(bits, nullptr);
    static_cast<std::uint16_t*>(bits)[0] = 0xF800;
    static_cast<std::uint16_t*>(bits)[2] = 0x001F; // a row of one pixel takes four bytes
    const HDC dc = CreateCompatibleDC(nullptr);
    SelectObject(dc, bitmap);
    EXPECT_EQ(GetPixel(dc, 0, 0), RGB(0, 0, 255));
    EXPECT_EQ(GetPixel(dc, 0, 1), RGB(255, 0, 0));
    DeleteDC(dc);
    DeleteObject(bitmap);
}

TEST(GdiBitmaps, ASectionStartsBlack)
{
    Canvas canvas(5, 3);
    EXPECT_EQ(canvas.Pixels(), std::vector<std::uint16_t>(15, 0));
}

TEST(GdiBitmaps, ASectionReportsItsHeightWithoutSign)
{
    void* bits = nullptr;
    const HBITMAP bitmap = CreateSection(DescribeRgb565(4, 7), &bits);
    BITMAP record{};
    GetObjectW(bitmap, sizeof(record), &record);
    EXPECT_EQ(record.bmHeight, 7);
    DeleteObject(bitmap);
}

TEST(GdiBitmaps, ASectionWithoutPixelsIsRefused)
{
    for (const auto& size : { SIZE{ 0, 1 }, SIZE{ 1, 0 }, SIZE{ -1, 1 } }) {
        void* bits = nullptr;
        EXPECT_EQ(CreateSection(DescribeRgb565(size.cx, size.cy), &bits), nullptr) << size.cx << " x " << size.cy;
    }
}

TEST(GdiBitmaps, ASectionLargerThanAnyMemoryIsRefused)
{
    void* bits = nullptr;
    EXPECT_EQ(CreateSection(DescribeRgb565(INT32_MAX, INT32_MAX), &bits), nullptr);
    EXPECT_EQ(CreateSection(DescribeRgb565(INT32_MAX, INT32_MIN), &bits), nullptr);
}

TEST(GdiBitmaps, ACompatibleBitmapHasTheContextsDepthAndHiddenPixels)
{
    Canvas canvas(1, 1);
    const HBITMAP bitmap = CreateCompatibleBitmap(canvas.Dc(), 6, 4);
    BITMAP record{};
    ASSERT_EQ(GetObjectW(bitmap, sizeof(record), &record), static_cast<int>(sizeof(record)));
    EXPECT_EQ(record.bmWidth, 6);
    EXPECT_EQ(record.bmHeight, 4);
    EXPECT_EQ(record.bmBitsPixel, 16);
    EXPECT_EQ(record.bmWidthBytes, 12);
    DeleteObject(bitmap);
}

TEST(GdiBitmaps, ACompatibleBitmapNeedsALivingContext)
{
    EXPECT_EQ(CreateCompatibleBitmap(nullptr, 4, 4), nullptr);
}

TEST(GdiBitmaps, GetPixelOutsideIsInvalid)
{
    Canvas canvas(2, 2);
    EXPECT_EQ(GetPixel(canvas.Dc(), -1, 0), CLR_INVALID);
    EXPECT_EQ(GetPixel(canvas.Dc(), 0, 2), CLR_INVALID);
    EXPECT_EQ(GetPixel(canvas.Dc(), INT32_MAX, INT32_MIN), CLR_INVALID);
}

} // namespace
