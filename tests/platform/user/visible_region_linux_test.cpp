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

TEST_F(VisibleRegionTest, ATransparentWindowCoversNothing)
{
    TestWindow below(Shown({ 0, 0, 50, 50 }));
    auto options = Shown({ 20, 20, 10, 10 });
    options.exStyle = WS_EX_TRANSPARENT;
    TestWindow above(options);
    Fill(below);
    EXPECT_EQ(Pixel(25, 25), kWhite);
}

TEST_F(VisibleRegionTest, AHiddenWindowAndAHiddenChildCoverNothing)
{
    TestWindow below(Shown({ 0, 0, 50, 50 }, WS_CLIPCHILDREN));
    TestWindow child(ShownChild(below, { 0, 0, 10, 10 }));
    TestWindow above(Shown({ 20, 20, 10, 10 }));
    ShowWindow(above, SW_HIDE);
    ShowWindow(child, SW_HIDE);
    Fill(below);
    EXPECT_EQ(Pixel(25, 25), kWhite);
    EXPECT_EQ(Pixel(5, 5), kWhite);
}

TEST_F(VisibleRegionTest, AChildBeyondItsParentsEdgeDrawsNothing)
{
    TestWindow parent(Shown({ 0, 0, 50, 50 }, WS_CLIPCHILDREN));
    TestWindow child(ShownChild(parent, { 60, 60, 10, 10 }));
    Fill(child);
    EXPECT_EQ(Pixel(65, 65), kBlack);
    InvalidateRect(child, nullptr, TRUE);
    EXPECT_FALSE(GetUpdateRect(child, nullptr, FALSE));
}

TEST_F(VisibleRegionTest, AWindowBelowAnotherOneCoversNothingOfIt)
{
    TestWindow below(Shown({ 0, 0, 50, 50 }));
    TestWindow above(Shown({ 20, 20, 50, 50 }));
    Fill(above);
    EXPECT_EQ(Pixel(25, 25), kWhite);
    EXPECT_EQ(Pixel(69, 69), kWhite);
}

TEST_F(VisibleRegionTest, AGrandchildLiesWhereItsAncestorsPutIt)
{
    TestWindow parent(Shown({ 10, 20, 100, 100 }));
    TestWindow child(ShownChild(parent, { 5, 6, 50, 50 }));
    TestWindow grandchild(ShownChild(child, { 7, 8, 10, 10 }));
    Fill(grandchild);
    EXPECT_EQ(Pixel(22, 34), kWhite);
    EXPECT_EQ(Pixel(31, 43), kWhite);
    EXPECT_EQ(Pixel(21, 34), kBlack);
    EXPECT_EQ(Pixel(22, 33), kBlack);
    EXPECT_EQ(Pixel(32, 43), kBlack);
    EXPECT_EQ(Pixel(31, 44), kBlack);
    MoveWindow(parent, 110, 20, 100, 100, FALSE);
    Fill(grandchild);
    EXPECT_EQ(Pixel(122, 34), kWhite);
}

TEST_F(VisibleRegionTest, APaintThatNobodyCanSeeIsForgotten)
{
    TestWindow below(Shown({ 0, 0, 50, 50 }));
    PumpMessages();
    InvalidateRect(below, nullptr, FALSE);
    TestWindow above(Shown({ 0, 0, 60, 60 }));
    below.Forget();
    PumpMessages();
    EXPECT_EQ(below.Count(WM_PAINT), 0);
    EXPECT_FALSE(GetUpdateRect(below, nullptr, FALSE));
}

TEST_F(VisibleRegionTest, APaintThatIsPartlyCoveredIsNotForgotten)
{
    TestWindow below(Shown({ 0, 0, 50, 50 }));
    PumpMessages();
    InvalidateRect(below, nullptr, FALSE);
    TestWindow above(Shown({ 0, 0, 40, 60 }));
    below.Forget();
    PumpMessages();
    EXPECT_EQ(below.Count(WM_PAINT), 1);
}

TEST_F(VisibleRegionTest, OnlyTheBareDesktopIsPaintedBlack)
{
    TestWindow below(Shown({ 0, 0, 20, 20 }));
    Fill(below);
    {
        TestWindow above(Shown({ 10, 0, 30, 20 }));
        Fill(above);
    }
    EXPECT_EQ(Pixel(15, 5), kWhite) << "the window below paints it itself";
    EXPECT_EQ(Pixel(25, 5), kBlack);
    MoveWindow(below, 100, 100, 20, 20, TRUE);
    EXPECT_EQ(Pixel(5, 5), kBlack);
}

TEST_F(VisibleRegionTest, WhatAHiddenWindowUncoversIsErasedAndPaintedByTheWindowsBeneath)
{
    TestWindow below(Shown({ 0, 0, 100, 100 }, WS_CLIPCHILDREN));
    TestWindow child(ShownChild(below, { 30, 30, 30, 30 }));
    TestWindow above(Shown({ 20, 20, 20, 20 }));
    PumpMessages();
    child.Handle({});
    child.Forget();
    ShowWindow(above, SW_HIDE);
    RECT rect{};
    EXPECT_TRUE(GetUpdateRect(below, &rect, FALSE));
    EXPECT_EQ(rect, (RECT{ 20, 20, 40, 40 }));
    EXPECT_TRUE(GetUpdateRect(child, &rect, FALSE));
    EXPECT_EQ(rect, (RECT{ 0, 0, 10, 10 }));
    UpdateWindow(child);
    EXPECT_EQ(child.Count(WM_ERASEBKGND), 1);
}

TEST_F(VisibleRegionTest, TheDesktopsContextCoversTheWholeScreen)
{
    TestWindow window(Shown({ 0, 0, 50, 50 }));
    const HDC screen = GetDC(nullptr);
    const RECT everything{ 0, 0, 320, 240 };
    FillRect(screen, &everything, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    ReleaseDC(nullptr, screen);
    EXPECT_EQ(Pixel(5, 5), kWhite);
    EXPECT_EQ(Pixel(319, 239), kWhite);
}

TEST_F(VisibleRegionTest, AContextOfAPaintStaysInItsPartWhenTheWindowMoves)
{
    TestWindow window(Shown({ 0, 0, 50, 50 }));
    PumpMessages();
    const RECT part{ 10, 10, 20, 20 };
    InvalidateRect(window, &part, FALSE);
    PAINTSTRUCT paint{};
    const HDC context = BeginPaint(window, &paint);
    MoveWindow(window, 100, 100, 50, 50, FALSE);
    const RECT everything{ 0, 0, 50, 50 };
    FillRect(context, &everything, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    EndPaint(window, &paint);
    EXPECT_EQ(Pixel(110, 110), kWhite);
    EXPECT_EQ(Pixel(109, 110), kBlack);
    EXPECT_EQ(Pixel(15, 15), kBlack);
}

TEST_F(VisibleRegionTest, TheRectangleToPaintIsWhatCanBeSeenOfTheUpdateRegion)
{
    TestWindow below(Shown({ 10, 0, 50, 50 }));
    PumpMessages();
    InvalidateRect(below, nullptr, FALSE);
    TestWindow above(Shown({ 0, 0, 30, 60 }));
    PAINTSTRUCT paint{};
    BeginPaint(below, &paint);
    EndPaint(below, &paint);
    EXPECT_EQ(paint.rcPaint, (RECT{ 20, 0, 50, 50 }));
}

TEST_F(VisibleRegionTest, AClassBrushMayBeASystemColour)
{
    struct Case {
        ULONG_PTR number;
        std::uint16_t pixel;
    };
    for (const auto& [number, pixel] : { Case{ 5 + 1, 0xFFFF }, Case{ 15 + 1, 0xC618 }, Case{ 30 + 1, 0xC618 } }) {
        WindowOptions options = Shown({ 0, 0, 20, 20 });
        options.handler = nullptr;
        options.background = reinterpret_cast<HBRUSH>(number);
        TestWindow window(options);
        PumpMessages();
        EXPECT_EQ(Pixel(0, 0), pixel) << number;
        EXPECT_EQ(Pixel(19, 19), pixel) << number;
    }
}

TEST_F(VisibleRegionTest, RedrawTurnedOffLetsNothingBeDrawn)
{
    TestWindow window(Shown({ 0, 0, 50, 50 }));
    SendMessageW(window, WM_SETREDRAW, FALSE, 0);
    Fill(window);
    EXPECT_EQ(Pixel(5, 5), kBlack);
    SendMessageW(window, WM_SETREDRAW, TRUE, 0);
    Fill(window);
    EXPECT_EQ(Pixel(5, 5), kWhite);
}

TEST_F(VisibleRegionTest, AStyleThatIsWrittenCountsAtOnce)
{
    TestWindow parent(Shown({ 0, 0, 50, 50 }));
    TestWindow child(ShownChild(parent, { 10, 10, 10, 10 }));
    Fill(parent);
    SetWindowLongPtrW(parent, GWL_STYLE, static_cast<LONG_PTR>(WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN));
    Fill(parent, BLACK_BRUSH);
    EXPECT_EQ(Pixel(15, 15), kWhite);
    EXPECT_EQ(Pixel(5, 5), kBlack);
    SetWindowLongPtrW(child, GWL_EXSTYLE, WS_EX_TRANSPARENT);
    Fill(parent, BLACK_BRUSH);
    EXPECT_EQ(Pixel(15, 15), kBlack);
}

TEST_F(VisibleRegionTest, AWindowOfNoParticularSizeFillsTheScreen)
{
    const int useDefault = static_cast<int>(0x80000000);
    const HWND window = CreateWindowExW(0, u"static", nullptr, WS_POPUP, useDefault, 7, useDefault, 9, nullptr, nullptr,
                                        nullptr, nullptr);
    RECT rect{};
    GetWindowRect(window, &rect);
    EXPECT_EQ(rect, (RECT{ 0, 0, 320, 240 }));
    DestroyWindow(window);
}

TEST_F(VisibleRegionTest, AWindowOfWhichAnotherPartIsSeenOwesNothing)
{
    TestWindow below(Shown({ 0, 0, 50, 50 }));
    PumpMessages();
    TestWindow above(Shown({ 0, 0, 40, 60 }));
    PumpMessages();
    SetWindowPos(above, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    PumpMessages();
    const RECT left{ 0, 0, 40, 50 };
    InvalidateRect(below, &left, FALSE);
    SetWindowPos(above, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    below.Forget();
    PumpMessages();
    EXPECT_EQ(below.Count(WM_PAINT), 0);
}

TEST_F(VisibleRegionTest, AButtonThatGrowsIsPaintedWhole)
{
    TestWindow parent(Shown({ 0, 0, 100, 100 }));
    const HWND button =
        CreateWindowExW(0, u"button", nullptr, WS_CHILD | WS_VISIBLE, 0, 0, 20, 20, parent, nullptr, nullptr, nullptr);
    RECT rect{};
    for (const SIZE& size : { SIZE{ 30, 20 }, SIZE{ 30, 40 } }) {
        PumpMessages();
        SetWindowPos(button, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        GetUpdateRect(button, &rect, FALSE);
        EXPECT_EQ(rect, (RECT{ 0, 0, size.cx, size.cy }));
    }
}

TEST_F(VisibleRegionTest, AWindowThatGoesWhileItIsAskedForItsPlaceIsNotPlaced)
{
    TestWindow window(Shown({ 0, 0, 50, 50 }));
    window.Handle([](HWND own, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_WINDOWPOSCHANGING)
            DestroyWindow(own);
        return std::nullopt;
    });
    EXPECT_FALSE(SetWindowPos(window, nullptr, 1, 1, 9, 9, SWP_NOZORDER));
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(VisibleRegionTest, AHiddenChildIsSeenUntilItsParentPaints)
{
    TestWindow parent(Shown({ 0, 0, 50, 50 }));
    TestWindow child(ShownChild(parent, { 10, 10, 10, 10 }));
    Fill(child);
    ShowWindow(child, SW_HIDE);
    EXPECT_EQ(Pixel(15, 15), kWhite);
}

TEST_F(VisibleRegionTest, AnExtendedStyleThatIsWrittenCountsAtOnce)
{
    TestWindow below(Shown({ 0, 0, 50, 50 }));
    TestWindow above(Shown({ 10, 10, 10, 10 }));
    Fill(below);
    ASSERT_EQ(Pixel(15, 15), kBlack);
    SetWindowLongPtrW(above, GWL_EXSTYLE, WS_EX_TRANSPARENT);
    Fill(below);
    EXPECT_EQ(Pixel(15, 15), kWhite);
}

TEST_F(VisibleRegionTest, AContextThatWasReleasedDrawsNothing)
{
    TestWindow window(Shown({ 0, 0, 50, 50 }));
    const HDC context = GetDC(window);
    EXPECT_EQ(ReleaseDC(window, context), 1);
    const RECT everything{ 0, 0, 50, 50 };
    FillRect(context, &everything, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    EXPECT_EQ(Pixel(5, 5), kBlack);
}

} // namespace
