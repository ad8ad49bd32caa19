#include "platform/ce.h"
#include "platform/linux/gdi/screen.h"
#include "platform/screen_size.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace cardsong::gdi;

std::vector<std::uint16_t> ScreenPixels()
{
    std::vector<std::uint16_t> pixels(kScreenWidthPx * kScreenHeightPx);
    CopyScreen(pixels);
    return pixels;
}

std::uint16_t ScreenPixel(int x, int y)
{
    return ScreenPixels()[static_cast<std::size_t>(y * kScreenWidthPx + x)];
}

// A screen context whose visible part is `boxes`.
class ScreenContext {
public:
    ScreenContext(POINT origin, std::vector<cairo_rectangle_int_t> boxes)
    {
        cairo_region_t* region = cairo_region_create_rectangles(boxes.data(), static_cast<int>(boxes.size()));
        m_dc = CreateScreenContext(origin, region);
        cairo_region_destroy(region);
    }
    ~ScreenContext() { DestroyScreenContext(m_dc); }
    ScreenContext(const ScreenContext&) = delete;
    ScreenContext& operator=(const ScreenContext&) = delete;
    HDC Dc() const { return m_dc; }

private:
    HDC m_dc;
};

void FillWhite(HDC dc, RECT rect)
{
    FillRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
}

class Screen : public testing::Test {
protected:
    Screen() { ClearScreen(); }
};

TEST_F(Screen, OriginShiftsDrawing)
{
    const ScreenContext context({ 10, 20 }, { { 0, 0, 320, 240 } });
    FillWhite(context.Dc(), { 0, 0, 1, 1 });
    EXPECT_EQ(ScreenPixel(10, 20), 0xFFFF);
    EXPECT_EQ(ScreenPixel(9, 20), 0);
    EXPECT_EQ(ScreenPixel(10, 19), 0);
}

TEST_F(Screen, OnlyTheVisiblePartIsTouched)
{
    const ScreenContext context({ 0, 0 }, { { 0, 0, 2, 1 }, { 5, 0, 2, 1 } });
    FillWhite(context.Dc(), { -100, -100, 1000, 1000 });
    std::vector<std::uint16_t> expected(kScreenWidthPx * kScreenHeightPx, 0);
    for (const std::size_t x : { 0U, 1U, 5U, 6U })
        expected[x] = 0xFFFF;
    EXPECT_EQ(ScreenPixels(), expected);
}

TEST_F(Screen, TextStaysInTheVisiblePart)
{
    const ScreenContext context({ 100, 100 }, { { 100, 100, 12, 10 }, { 120, 100, 4, 20 } });
    SetTextColor(context.Dc(), RGB(255, 255, 255));
    RECT rect = { 0, 0, 200, 100 };
    DrawTextW(context.Dc(), TEXT("MMMMMMMM"), -1, &rect, DT_SINGLELINE | DT_NOCLIP);
    const auto pixels = ScreenPixels();
    int inside = 0;
    for (int y = 0; y < kScreenHeightPx; ++y) {
        for (int x = 0; x < kScreenWidthPx; ++x) {
            const bool inFirst = x >= 100 && x < 112 && y >= 100 && y < 110;
            const bool inSecond = x >= 120 && x < 124 && y >= 100 && y < 120;
            const bool isDrawn = pixels[static_cast<std::size_t>(y * kScreenWidthPx + x)] != 0;
            ASSERT_TRUE(inFirst || inSecond || !isDrawn) << x << "," << y;
            inside += isDrawn ? 1 : 0;
        }
    }
    EXPECT_GT(inside, 0);
}

TEST_F(Screen, AnEmptyRegionDrawsNothingYetSucceeds)
{
    const ScreenContext context({ 0, 0 }, {});
    const std::uint64_t before = ScreenGeneration();
    const RECT rect = { 0, 0, 9, 9 };
    EXPECT_NE(FillRect(context.Dc(), &rect, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH))), 0);
    EXPECT_EQ(ScreenGeneration(), before);
}

TEST_F(Screen, GenerationGrowsOnlyWhenTheScreenIsReached)
{
    const ScreenContext context({ 0, 0 }, { { 0, 0, 320, 240 } });
    const std::uint64_t before = ScreenGeneration();
    FillWhite(context.Dc(), { 0, 0, 1, 1 });
    EXPECT_EQ(ScreenGeneration(), before + 1);
    FillWhite(context.Dc(), { -5, -5, 0, 0 });
    EXPECT_EQ(ScreenGeneration(), before + 1);
}

TEST_F(Screen, AMovedContextDrawsAtItsNewPlace)
{
    const ScreenContext context({ 0, 0 }, { { 0, 0, 320, 240 } });
    const cairo_rectangle_int_t box = { 50, 60, 1, 1 };
    cairo_region_t* region = cairo_region_create_rectangle(&box);
    UpdateScreenContext(context.Dc(), { 50, 60 }, region);
    cairo_region_destroy(region);
    FillWhite(context.Dc(), { 0, 0, 5, 5 });
    EXPECT_EQ(ScreenPixel(50, 60), 0xFFFF);
    EXPECT_EQ(ScreenPixel(51, 60), 0);
}

TEST_F(Screen, ContextsCannotBeDeletedAsMemoryContexts)
{
    const ScreenContext context({ 0, 0 }, { { 0, 0, 320, 240 } });
    EXPECT_FALSE(DeleteDC(context.Dc()));
    FillWhite(context.Dc(), { 0, 0, 1, 1 });
    EXPECT_EQ(ScreenPixel(0, 0), 0xFFFF);
}

TEST_F(Screen, ContextsTakeNoBitmap)
{
    const ScreenContext context({ 0, 0 }, { { 0, 0, 320, 240 } });
    const HBITMAP bitmap = CreateCompatibleBitmap(context.Dc(), 4, 4);
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(SelectObject(context.Dc(), bitmap), nullptr);
    EXPECT_TRUE(DeleteObject(bitmap));
}

TEST_F(Screen, PatternsStartAtTheContextsOrigin)
{
    const ScreenContext context({ 3, 5 }, { { 0, 0, 320, 240 } });
    const HDC memory = CreateCompatibleDC(context.Dc());
    const HBITMAP tile = CreateCompatibleBitmap(context.Dc(), 2, 1);
    const HGDIOBJ before = SelectObject(memory, tile);
    FillWhite(memory, { 1, 0, 2, 1 });
    const HBRUSH brush = CreatePatternBrush(tile);
    const RECT rect = { -1, 0, 3, 1 };
    FillRect(context.Dc(), &rect, brush);
    EXPECT_EQ(ScreenPixel(2, 5), 0xFFFF);
    EXPECT_EQ(ScreenPixel(3, 5), 0);
    EXPECT_EQ(ScreenPixel(4, 5), 0xFFFF);
    SelectObject(memory, before);
    DeleteObject(tile);
    DeleteObject(brush);
    DeleteDC(memory);
}

TEST_F(Screen, IsACopySourceToo)
{
    const ScreenContext context({ 8, 0 }, { { 0, 0, 320, 240 } });
    FillWhite(context.Dc(), { 0, 0, 1, 1 });
    EXPECT_TRUE(BitBlt(context.Dc(), 1, 0, 2, 1, context.Dc(), 0, 0, SRCCOPY));
    EXPECT_EQ(ScreenPixel(8, 0), 0xFFFF);
    EXPECT_EQ(ScreenPixel(9, 0), 0xFFFF);
    EXPECT_EQ(ScreenPixel(10, 0), 0);
}

} // namespace
