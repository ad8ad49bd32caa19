#include "tests/platform/gdi/canvas.h"

#include <gtest/gtest.h>

#include <vector>

using cardsong::test::Canvas;
using Words = std::vector<std::uint16_t>;

namespace {

TEST(FillRect, ColoursTheRectangleWithoutItsRightAndBottomEdge)
{
    Canvas canvas(3, 3);
    const HBRUSH red = CreateSolidBrush(RGB(255, 0, 0));
    const RECT rect = { 1, 1, 2, 3 };
    EXPECT_NE(FillRect(canvas.Dc(), &rect, red), 0);
    EXPECT_EQ(canvas.Pixels(), (Words{ 0, 0, 0, 0, 0xF800, 0, 0, 0xF800, 0 }));
    DeleteObject(red);
}

TEST(FillRect, IsCutToTheTarget)
{
    Canvas canvas(2, 1);
    const RECT rect = { -1000, -1000, 1, 1000 };
    EXPECT_NE(FillRect(canvas.Dc(), &rect, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH))), 0);
    EXPECT_EQ(canvas.Pixels(), (Words{ 0xFFFF, 0 }));
}

TEST(FillRect, WithTheHollowBrushDrawsNothing)
{
    Canvas canvas(1, 1);
    canvas.Fill(5);
    const RECT rect = { 0, 0, 1, 1 };
    EXPECT_NE(FillRect(canvas.Dc(), &rect, static_cast<HBRUSH>(GetStockObject(NULL_BRUSH))), 0);
    EXPECT_EQ(canvas.At(0, 0), 5);
}

TEST(FillRect, StockGrayIsHalfway)
{
    Canvas canvas(1, 1);
    const RECT rect = { 0, 0, 1, 1 };
    FillRect(canvas.Dc(), &rect, static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH)));
    EXPECT_EQ(canvas.At(0, 0), 0x8410);
}

TEST(FillRect, WithADeadBrushTakesTheSelectedOne)
{
    Canvas canvas(2, 1);
    const HBRUSH red = CreateSolidBrush(RGB(255, 0, 0));
    const HBRUSH dead = CreateSolidBrush(RGB(0, 0, 255));
    DeleteObject(dead);
    const HGDIOBJ before = SelectObject(canvas.Dc(), red);
    const RECT rect = { 1, 0, 2, 1 };
    EXPECT_NE(FillRect(canvas.Dc(), &rect, dead), 0);
    EXPECT_EQ(canvas.Pixels(), (Words{ 0, 0xF800 }));
    SelectObject(canvas.Dc(), before);
    DeleteObject(red);
}

TEST(FillRect, TellsOfNoDeadContext)
{
    const HDC dead = CreateCompatibleDC(nullptr);
    DeleteDC(dead);
    const RECT rect = { 0, 0, 1, 1 };
    EXPECT_NE(FillRect(dead, &rect, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH))), 0);
}

TEST(FillRect, OfAnEmptyRectangleDrawsNothing)
{
    Canvas canvas(2, 1);
    const RECT rect = { 1, 0, 1, 1 };
    EXPECT_NE(FillRect(canvas.Dc(), &rect, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH))), 0);
    EXPECT_EQ(canvas.Pixels(), (Words{ 0, 0 }));
}

TEST(PatternBrush, RepeatsFromTheContextsOrigin)
{
    Canvas tile(2, 2);
    tile.Set({ 1, 2, 3, 4 });
    const HBRUSH brush = CreatePatternBrush(tile.Handle());
    ASSERT_NE(brush, nullptr);
    Canvas canvas(4, 3);
    const RECT rect = { 1, 1, 4, 3 };
    EXPECT_NE(FillRect(canvas.Dc(), &rect, brush), 0);
    EXPECT_EQ(canvas.Pixels(), (Words{ 0, 0, 0, 0, 0, 4, 3, 4, 0, 2, 1, 2 }));
    DeleteObject(brush);
}

TEST(PatternBrush, KeepsItsOwnCopy)
{
    HBRUSH brush = nullptr;
    {
        Canvas tile(1, 1);
        tile.Fill(7);
        brush = CreatePatternBrush(tile.Handle());
        tile.Fill(8);
    }
    Canvas canvas(1, 1);
    const RECT rect = { 0, 0, 1, 1 };
    FillRect(canvas.Dc(), &rect, brush);
    EXPECT_EQ(canvas.At(0, 0), 7);
    DeleteObject(brush);
}

TEST(PatternBrush, NeedsALivingBitmap)
{
    EXPECT_EQ(CreatePatternBrush(nullptr), nullptr);
}

TEST(SystemColorBrush, BelongsToTheSystemAndIsTheSameEachTime)
{
    const HBRUSH brush = GetSysColorBrush(COLOR_HIGHLIGHT);
    ASSERT_NE(brush, nullptr);
    DeleteObject(brush);
    EXPECT_EQ(GetSysColorBrush(COLOR_HIGHLIGHT), brush);
    Canvas canvas(1, 1);
    const RECT rect = { 0, 0, 1, 1 };
    EXPECT_NE(FillRect(canvas.Dc(), &rect, brush), 0);
    EXPECT_NE(canvas.At(0, 0), 0);
}

TEST(SystemColorBrush, OfAColourThatThereIsNotIsNone)
{
    EXPECT_EQ(GetSysColorBrush(1000), nullptr);
    EXPECT_EQ(GetSysColorBrush(-1), nullptr);
}

} // namespace
