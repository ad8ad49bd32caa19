#include "tests/platform/gdi/canvas.h"

#include <gtest/gtest.h>

using cardsong::test::Canvas;

namespace {

TEST(GdiObjects, AFreshMemoryContextIsOnePixel)
{
    const HDC dc = CreateCompatibleDC(nullptr);
    EXPECT_NE(GetPixel(dc, 0, 0), CLR_INVALID);
    EXPECT_EQ(GetPixel(dc, 1, 0), CLR_INVALID);
    EXPECT_EQ(GetPixel(dc, 0, 1), CLR_INVALID);
    DeleteDC(dc);
}

TEST(GdiObjects, ABitmapSelectsIntoOneContextOnly)
{
    Canvas canvas(2, 2);
    const HDC second = CreateCompatibleDC(nullptr);
    EXPECT_EQ(SelectObject(second, canvas.Handle()), nullptr);
    DeleteDC(second);
}

TEST(GdiObjects, ADeselectedBitmapSelectsElsewhere)
{
    const HDC first = CreateCompatibleDC(nullptr);
    const HDC second = CreateCompatibleDC(nullptr);
    const auto info = cardsong::test::DescribeRgb565(2, -2);
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(first, info.Get(), DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ before = SelectObject(first, bitmap);
    EXPECT_EQ(SelectObject(first, before), bitmap);
    EXPECT_NE(SelectObject(second, bitmap), nullptr);
    DeleteDC(second);
    DeleteDC(first);
    EXPECT_TRUE(DeleteObject(bitmap));
}

TEST(GdiObjects, ADeletedContextLetsGoOfItsBitmap)
{
    const HDC first = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = CreateCompatibleBitmap(first, 2, 2);
    SelectObject(first, bitmap);
    EXPECT_TRUE(DeleteDC(first));
    const HDC second = CreateCompatibleDC(nullptr);
    EXPECT_NE(SelectObject(second, bitmap), nullptr);
    DeleteDC(second);
    EXPECT_TRUE(DeleteObject(bitmap));
}

TEST(GdiObjects, DeleteObjectEndsAMemoryContextToo)
{
    const HDC dc = CreateCompatibleDC(nullptr);
    EXPECT_TRUE(DeleteObject(dc));
    EXPECT_FALSE(DeleteDC(dc));
}

TEST(GdiObjects, SelectReturnsTheObjectBefore)
{
    Canvas canvas(2, 2);
    const HBRUSH red = CreateSolidBrush(RGB(255, 0, 0));
    const HGDIOBJ before = SelectObject(canvas.Dc(), red);
    EXPECT_EQ(before, GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(SelectObject(canvas.Dc(), before), red);
    EXPECT_TRUE(DeleteObject(red));
}

TEST(GdiObjects, ADeletedHandleIsDead)
{
    const HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    EXPECT_TRUE(DeleteObject(brush));
    EXPECT_FALSE(DeleteObject(brush));
    Canvas canvas(2, 2);
    EXPECT_EQ(SelectObject(canvas.Dc(), brush), nullptr);
}

TEST(GdiObjects, ADeadHandleNeverNamesALaterObject)
{
    const HBRUSH dead = CreateSolidBrush(RGB(1, 2, 3));
    DeleteObject(dead);
    const HBRUSH later = CreateSolidBrush(RGB(4, 5, 6));
    EXPECT_NE(dead, later);
    EXPECT_TRUE(DeleteObject(later));
}

TEST(GdiObjects, ADeletedContextFailsEveryCall)
{
    const HDC dc = CreateCompatibleDC(nullptr);
    EXPECT_TRUE(DeleteDC(dc));
    EXPECT_FALSE(DeleteDC(dc));
    EXPECT_EQ(CreateCompatibleDC(dc), nullptr);
    EXPECT_EQ(SelectObject(dc, GetStockObject(WHITE_BRUSH)), nullptr);
    EXPECT_EQ(GetPixel(dc, 0, 0), CLR_INVALID);
    EXPECT_EQ(SetTextColor(dc, 0), CLR_INVALID);
    EXPECT_EQ(SetBkColor(dc, 0), CLR_INVALID);
    EXPECT_EQ(SetBkMode(dc, TRANSPARENT), 0);
    EXPECT_EQ(GetDeviceCaps(dc, LOGPIXELSY), 0);
}

TEST(GdiObjects, AForeignKindIsRefused)
{
    Canvas canvas(2, 2);
    const HDC brushAsContext = reinterpret_cast<HDC>(GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(GetPixel(brushAsContext, 0, 0), CLR_INVALID);
    EXPECT_FALSE(BitBlt(canvas.Dc(), 0, 0, 1, 1, brushAsContext, 0, 0, SRCCOPY));
}

TEST(GdiObjects, StockObjectsOutliveTheirDeletion)
{
    const HGDIOBJ white = GetStockObject(WHITE_BRUSH);
    ASSERT_NE(white, nullptr);
    DeleteObject(white);
    Canvas canvas(1, 1);
    const RECT rect = { 0, 0, 1, 1 };
    EXPECT_NE(FillRect(canvas.Dc(), &rect, static_cast<HBRUSH>(white)), 0);
    EXPECT_EQ(canvas.At(0, 0), 0xFFFF);
}

TEST(GdiObjects, AContextStartsWithBlackOnOpaqueWhite)
{
    const HDC dc = CreateCompatibleDC(nullptr);
    EXPECT_EQ(SetTextColor(dc, RGB(1, 2, 3)), RGB(0, 0, 0));
    EXPECT_EQ(SetTextColor(dc, 0), RGB(1, 2, 3));
    EXPECT_EQ(SetBkColor(dc, RGB(4, 5, 6)), RGB(255, 255, 255));
    EXPECT_EQ(SetBkColor(dc, 0), RGB(4, 5, 6));
    EXPECT_EQ(SetBkMode(dc, TRANSPARENT), OPAQUE);
    EXPECT_EQ(SetBkMode(dc, OPAQUE), TRANSPARENT);
    DeleteDC(dc);
}

TEST(GdiObjects, TheScreenHasNinetySixDotsToTheInch)
{
    const HDC dc = CreateCompatibleDC(nullptr);
    EXPECT_EQ(GetDeviceCaps(dc, LOGPIXELSX), 96);
    EXPECT_EQ(GetDeviceCaps(dc, LOGPIXELSY), 96);
    DeleteDC(dc);
}

TEST(GdiObjects, GetObjectDescribesASection)
{
    Canvas canvas(3, 2);
    BITMAP record{};
    EXPECT_EQ(GetObjectW(canvas.Handle(), sizeof(record), &record), static_cast<int>(sizeof(record)));
    EXPECT_EQ(record.bmWidth, 3);
    EXPECT_EQ(record.bmHeight, 2);
    EXPECT_EQ(record.bmWidthBytes, 8); // four-byte rows
    EXPECT_EQ(record.bmPlanes, 1);
    EXPECT_EQ(record.bmBitsPixel, 16);
    EXPECT_EQ(record.bmBits, &canvas.At(0, 0));
}

TEST(GdiObjects, GetObjectTellsTheSizeOfItsRecord)
{
    Canvas canvas(3, 2);
    EXPECT_EQ(GetObjectW(canvas.Handle(), 0, nullptr), static_cast<int>(sizeof(BITMAP)));
    BITMAP record{};
    EXPECT_EQ(GetObjectW(canvas.Handle(), sizeof(BITMAP) - 1, &record), 0);
}

TEST(GdiObjects, GetObjectGivesAFontsDescriptionBack)
{
    LOGFONTW asked{};
    asked.lfHeight = -24;
    asked.lfWeight = 700;
    asked.lfFaceName[0] = 'A';
    const HFONT font = CreateFontIndirectW(&asked);
    LOGFONTW told{};
    EXPECT_EQ(GetObjectW(font, sizeof(told), &told), static_cast<int>(sizeof(told)));
    EXPECT_EQ(told.lfHeight, -24);
    EXPECT_EQ(told.lfWeight, 700);
    EXPECT_EQ(told.lfFaceName[0], 'A');
    EXPECT_TRUE(DeleteObject(font));
    EXPECT_EQ(GetObjectW(font, sizeof(told), &told), 0);
}

TEST(GdiObjects, ASelectedFontDrawsOnAfterItsDeletion)
{
    Canvas canvas(4, 4);
    LOGFONTW asked{};
    asked.lfHeight = -20;
    const HFONT font = CreateFontIndirectW(&asked);
    const HGDIOBJ before = SelectObject(canvas.Dc(), font);
    TEXTMETRICW atFirst{};
    ASSERT_TRUE(GetTextMetricsW(canvas.Dc(), &atFirst));
    DeleteObject(font);
    TEXTMETRICW afterwards{};
    EXPECT_TRUE(GetTextMetricsW(canvas.Dc(), &afterwards));
    EXPECT_EQ(afterwards.tmHeight, atFirst.tmHeight);
    SelectObject(canvas.Dc(), before);
}

TEST(GdiObjects, GetObjectTellsTheSizeOfAFontsDescription)
{
    LOGFONTW asked{};
    asked.lfHeight = -24;
    const HFONT font = CreateFontIndirectW(&asked);
    EXPECT_EQ(GetObjectW(font, 0, nullptr), static_cast<int>(sizeof(LOGFONTW)));
    EXPECT_TRUE(DeleteObject(font));
}

TEST(GdiObjects, ADeletedFontIsGoneOnceNoContextHoldsIt)
{
    Canvas canvas(4, 4);
    const LOGFONTW asked{};
    const HFONT font = CreateFontIndirectW(&asked);
    const HGDIOBJ before = SelectObject(canvas.Dc(), font);
    DeleteObject(font);
    SelectObject(canvas.Dc(), before);
    EXPECT_EQ(GetObjectW(font, 0, nullptr), 0);
    EXPECT_EQ(SelectObject(canvas.Dc(), font), nullptr);
}

TEST(GdiObjects, AnUnknownAbilityOfADeviceIsNone)
{
    Canvas canvas(1, 1);
    constexpr int kNoSuchIndex = 9999;
    EXPECT_EQ(GetDeviceCaps(canvas.Dc(), kNoSuchIndex), 0);
}

TEST(Drawing, IsDoneWhenItIsFlushed)
{
    Canvas canvas(2, 1);
    canvas.Fill(0);
    const RECT whole = { 0, 0, 2, 1 };
    FillRect(canvas.Dc(), &whole, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    EXPECT_TRUE(GdiFlush());
    EXPECT_EQ(canvas.Pixels(), (std::vector<std::uint16_t>{ 0xFFFF, 0xFFFF }));
}

} // namespace
