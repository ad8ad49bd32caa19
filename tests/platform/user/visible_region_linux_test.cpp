// What of a window's drawing reaches the screen.
#include "platform/linux/gdi/screen.h"
#include "platform/linux/user/input.h"
#include "platform/screen_size.h"
#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

using namespace cardsong;

namespace {

constexpr std::uint16_t kWhite = 0xFFFF;
constexpr std::uint16_t kBlack = 0;

class VisibleRegionTest : public testing::Test {
protected:
    VisibleRegionTest()
    {
        user::ResetWindows();
        gdi::ClearScreen();
    }
    ~VisibleRegionTest() override { user::ResetWindows(); }

    static WindowOptions Shown(RECT rect, DWORD style = 0)
    {
        WindowOptions options;
        options.style = WS_POPUP | WS_VISIBLE | style;
        options.rect = rect;
        options.handler = JustValidate;
        return options;
    }
    static WindowOptions ShownChild(HWND parent, RECT rect, DWORD style = 0)
    {
        WindowOptions options = Shown(rect);
        options.style = WS_CHILD | WS_VISIBLE | style;
        options.parent = parent;
        return options;
    }
    static void Fill(HWND window, int brush = WHITE_BRUSH)
    {
        const HDC context = GetDC(window);
        const RECT everything{ -1000, -1000, 1000, 1000 };
        FillRect(context, &everything, static_cast<HBRUSH>(GetStockObject(brush)));
        ReleaseDC(window, context);
    }
    static std::uint16_t Pixel(int x, int y)
    {
        std::vector<std::uint16_t> pixels(kScreenWidthPx * kScreenHeightPx);
        gdi::CopyScreen(pixels);
        return pixels[static_cast<std::size_t>(y * kScreenWidthPx + x)];
    }
};

TEST_F(VisibleRegionTest, AWindowDrawsInsideItsRectangleOnly)
{
    TestWindow window(Shown({ 10, 20, 30, 40 }));
    Fill(window);
    EXPECT_EQ(Pixel(10, 20), kWhite);
    EXPECT_EQ(Pixel(39, 59), kWhite);
    EXPECT_EQ(Pixel(9, 20), kBlack);
    EXPECT_EQ(Pixel(40, 59), kBlack);
}

TEST_F(VisibleRegionTest, AHigherTopLevelWindowIsNotDrawnOver)
{
    TestWindow below(Shown({ 0, 0, 50, 50 }));
    TestWindow above(Shown({ 20, 20, 10, 10 }));
    Fill(below);
    EXPECT_EQ(Pixel(19, 20), kWhite);
    EXPECT_EQ(Pixel(20, 20), kBlack);
}

TEST_F(VisibleRegionTest, AParentDrawsOverItsChildrenUnlessItClipsThem)
{
    TestWindow plain(Shown({ 0, 0, 50, 50 }));
    TestWindow child(ShownChild(plain, { 10, 10, 10, 10 }));
    Fill(plain);
    EXPECT_EQ(Pixel(15, 15), kWhite);
    TestWindow clipping(Shown({ 100, 0, 50, 50 }, WS_CLIPCHILDREN));
    TestWindow kept(ShownChild(clipping, { 10, 10, 10, 10 }));
    Fill(clipping);
    EXPECT_EQ(Pixel(115, 15), kBlack);
    EXPECT_EQ(Pixel(109, 15), kWhite);
}

TEST_F(VisibleRegionTest, AChildYieldsToASiblingAboveItOnlyIfItClipsSiblings)
{
    TestWindow parent(Shown({ 0, 0, 100, 100 }));
    TestWindow above(ShownChild(parent, { 0, 0, 20, 20 }));
    TestWindow yielding(ShownChild(parent, { 10, 10, 20, 20 }, WS_CLIPSIBLINGS));
    TestWindow ruthless(ShownChild(parent, { 0, 10, 5, 20 }));
    Fill(yielding);
    EXPECT_EQ(Pixel(15, 15), kBlack);
    EXPECT_EQ(Pixel(25, 25), kWhite);
    Fill(ruthless);
    EXPECT_EQ(Pixel(2, 15), kWhite);
}

TEST_F(VisibleRegionTest, AChildIsClippedByItsParent)
{
    TestWindow parent(Shown({ 0, 0, 50, 50 }));
    TestWindow child(ShownChild(parent, { 40, 40, 50, 50 }));
    Fill(child);
    EXPECT_EQ(Pixel(49, 49), kWhite);
    EXPECT_EQ(Pixel(50, 50), kBlack);
}

TEST_F(VisibleRegionTest, AHiddenWindowDrawsNothing)
{
    TestWindow window(Shown({ 0, 0, 50, 50 }));
    ShowWindow(window, SW_HIDE);
    Fill(window);
    EXPECT_EQ(Pixel(5, 5), kBlack);
}

TEST_F(VisibleRegionTest, AHeldContextFollowsItsWindow)
{
    TestWindow window(Shown({ 0, 0, 20, 20 }));
    const HDC context = GetDC(window);
    MoveWindow(window, 100, 100, 20, 20, FALSE);
    TestWindow cover(Shown({ 110, 100, 20, 20 }));
    const RECT everything{ 0, 0, 500, 500 };
    FillRect(context, &everything, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    EXPECT_EQ(Pixel(5, 5), kBlack);
    EXPECT_EQ(Pixel(105, 105), kWhite);
    EXPECT_EQ(Pixel(115, 105), kBlack);
    DestroyWindow(window);
    FillRect(context, &everything, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    EXPECT_EQ(Pixel(5, 5), kBlack);
    EXPECT_EQ(ReleaseDC(window, context), 1);
    EXPECT_EQ(ReleaseDC(window, context), 0);
}

TEST_F(VisibleRegionTest, AVanishingWindowInvalidatesWhatItCovered)
{
    TestWindow below(Shown({ 0, 0, 100, 100 }));
    TestWindow child(ShownChild(below, { 0, 0, 30, 30 }));
    PumpMessages();
    {
        TestWindow above(Shown({ 20, 20, 40, 40 }));
        PumpMessages();
        EXPECT_FALSE(GetUpdateRect(below, nullptr, FALSE));
    }
    RECT rect{};
    EXPECT_TRUE(GetUpdateRect(below, &rect, FALSE));
    EXPECT_EQ(rect, (RECT{ 20, 20, 60, 60 }));
    EXPECT_TRUE(GetUpdateRect(child, &rect, FALSE));
    EXPECT_EQ(rect, (RECT{ 20, 20, 30, 30 }));
}

TEST_F(VisibleRegionTest, AMovedWindowInvalidatesWhatItCoveredAndItself)
{
    TestWindow below(Shown({ 0, 0, 100, 100 }));
    TestWindow above(Shown({ 0, 0, 20, 20 }));
    PumpMessages();
    MoveWindow(above, 10, 0, 20, 20, TRUE);
    RECT rect{};
    EXPECT_TRUE(GetUpdateRect(below, &rect, FALSE));
    EXPECT_EQ(rect, (RECT{ 0, 0, 10, 20 }));
    EXPECT_TRUE(GetUpdateRect(above, &rect, FALSE));
    EXPECT_EQ(rect, (RECT{ 0, 0, 20, 20 }));
}

TEST_F(VisibleRegionTest, RaisingAWindowInvalidatesOnlyWhatItGains)
{
    TestWindow first(Shown({ 0, 0, 20, 20 }));
    TestWindow second(Shown({ 10, 0, 20, 20 }));
    PumpMessages();
    SetForegroundWindow(first);
    RECT rect{};
    EXPECT_TRUE(GetUpdateRect(first, &rect, FALSE));
    EXPECT_EQ(rect, (RECT{ 10, 0, 20, 20 }));
    EXPECT_FALSE(GetUpdateRect(second, nullptr, FALSE));
}

TEST_F(VisibleRegionTest, WhereNoWindowIsLeftTheDesktopIsBlack)
{
    {
        TestWindow window(Shown({ 0, 0, 20, 20 }));
        Fill(window);
        EXPECT_EQ(Pixel(5, 5), kWhite);
    }
    EXPECT_EQ(Pixel(5, 5), kBlack);
}

TEST_F(VisibleRegionTest, PaintingIsConfinedToTheUpdateRegion)
{
    TestWindow window(Shown({ 0, 0, 50, 50 }));
    PumpMessages();
    const RECT part{ 10, 10, 20, 20 };
    InvalidateRect(window, &part, FALSE);
    PAINTSTRUCT paint{};
    const HDC context = BeginPaint(window, &paint);
    const RECT everything{ 0, 0, 50, 50 };
    FillRect(context, &everything, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    EndPaint(window, &paint);
    EXPECT_EQ(paint.rcPaint, part);
    EXPECT_EQ(Pixel(15, 15), kWhite);
    EXPECT_EQ(Pixel(5, 5), kBlack);
}

TEST_F(VisibleRegionTest, TheClassBrushErases)
{
    WindowOptions options = Shown({ 0, 0, 20, 20 });
    options.handler = nullptr;
    options.background = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    TestWindow window(options);
    PumpMessages();
    EXPECT_EQ(Pixel(5, 5), kWhite);
}

} // namespace
