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

class BlackAndWhite : public testing::Test {
protected:
    BlackAndWhite() : m_dc(CreateCompatibleDC(nullptr)), m_bitmap(CreateCompatibleBitmap(m_dc, 5, 3)) {}
    ~BlackAndWhite() override
    {
        DeleteDC(m_dc);
        DeleteObject(m_bitmap);
    }

    HDC m_dc;
    HBITMAP m_bitmap;
};

TEST_F(BlackAndWhite, IsWhatAFreshMemoryContextIsCompatibleWith)
{
    BITMAP record{};
    ASSERT_EQ(GetObjectW(m_bitmap, sizeof(record), &record), static_cast<int>(sizeof(record)));
    EXPECT_EQ(record.bmWidth, 5);
    EXPECT_EQ(record.bmHeight, 3);
    EXPECT_EQ(record.bmBitsPixel, 1);
    EXPECT_EQ(record.bmWidthBytes, 2);
}

TEST_F(BlackAndWhite, IsWhatAContextWithSuchABitmapIsCompatibleWith)
{
    SelectObject(m_dc, m_bitmap);
    const HBITMAP second = CreateCompatibleBitmap(m_dc, 40, 1);
    BITMAP record{};
    GetObjectW(second, sizeof(record), &record);
    EXPECT_EQ(record.bmBitsPixel, 1);
    EXPECT_EQ(record.bmWidthBytes, 6);
    DeleteObject(second);
}

TEST_F(BlackAndWhite, ColoursBecomeBlackAndWhiteStays)
{
    SelectObject(m_dc, m_bitmap);
    const RECT left = { 0, 0, 1, 1 };
    const RECT right = { 1, 0, 2, 1 };
    FillRect(m_dc, &left, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    const HBRUSH red = CreateSolidBrush(RGB(255, 0, 0));
    FillRect(m_dc, &right, red);
    EXPECT_EQ(GetPixel(m_dc, 0, 0), RGB(255, 255, 255));
    EXPECT_EQ(GetPixel(m_dc, 1, 0), RGB(0, 0, 0));
    DeleteObject(red);
}

TEST_F(BlackAndWhite, ACopiedPictureKeepsItsWhiteOnly)
{
    SelectObject(m_dc, m_bitmap);
    Canvas picture(3, 1);
    picture.Set({ 0xFFFF, 0x07E0, 0xFFFF });
    EXPECT_TRUE(BitBlt(m_dc, 0, 0, 3, 1, picture.Dc(), 0, 0, SRCCOPY));
    EXPECT_TRUE(BitBlt(picture.Dc(), 0, 0, 3, 1, m_dc, 0, 0, SRCCOPY));
    EXPECT_EQ(picture.Pixels(), (std::vector<std::uint16_t>{ 0xFFFF, 0, 0xFFFF }));
}

TEST(GdiBitmaps, ASectionMayBeAsLongAsItLikes)
{
    for (const auto& size : { SIZE{ 100000, 1 }, SIZE{ 1, 100000 } }) {
        void* bits = nullptr;
        const HBITMAP bitmap = CreateSection(DescribeRgb565(size.cx, size.cy), &bits);
        EXPECT_NE(bits, nullptr) << size.cx << " x " << size.cy;
        EXPECT_TRUE(DeleteObject(bitmap));
    }
}

TEST(GdiBitmaps, ACompatibleBitmapNeedsALivingContext)
{
    EXPECT_EQ(CreateCompatibleBitmap(nullptr, 4, 4), nullptr);
}

TEST(GdiBitmaps, AContextThatGetsItsFirstBitmapBackIsOnePixelLargeAgain)
{
    Canvas canvas(2, 2);
    const HDC context = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = CreateCompatibleBitmap(canvas.Dc(), 2, 2);
    const HGDIOBJ first = SelectObject(context, bitmap);
    EXPECT_NE(GetPixel(context, 1, 1), CLR_INVALID);
    SelectObject(context, first);
    EXPECT_NE(GetPixel(context, 0, 0), CLR_INVALID);
    EXPECT_EQ(GetPixel(context, 1, 0), CLR_INVALID);
    EXPECT_EQ(GetPixel(context, 0, 1), CLR_INVALID);
    DeleteDC(context);
    DeleteObject(bitmap);
}

TEST(GdiBitmaps, GetPixelOutsideIsInvalid)
{
    Canvas canvas(2, 2);
    EXPECT_EQ(GetPixel(canvas.Dc(), -1, 0), CLR_INVALID);
    EXPECT_EQ(GetPixel(canvas.Dc(), 0, 2), CLR_INVALID);
    EXPECT_EQ(GetPixel(canvas.Dc(), INT32_MAX, INT32_MIN), CLR_INVALID);
}

} // namespace
