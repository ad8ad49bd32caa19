// Moving, sizing, showing and hiding: what a window is told, and what it has to paint afterwards.
#include "tests/platform/user/pump.h"
#include "tests/platform/wine.h"

#include <gtest/gtest.h>

namespace {

constexpr UINT kStay = SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE;

// Keeps the last position that it was told of.
class PositionedWindow : public TestWindow {
public:
    explicit PositionedWindow(WindowOptions options = {}) : TestWindow(options)
    {
        Handle([this](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
            if (message == WM_WINDOWPOSCHANGING)
                changing = *reinterpret_cast<const WINDOWPOS*>(lParam);
            if (message == WM_WINDOWPOSCHANGED)
                changed = *reinterpret_cast<const WINDOWPOS*>(lParam);
            return JustValidate(window, message, wParam, lParam);
        });
    }
    WINDOWPOS changing{};
    WINDOWPOS changed{};
};

WindowOptions Shown(RECT rect = { 10, 10, 50, 40 }, UINT classStyle = 0)
{
    WindowOptions options;
    options.style = WS_POPUP | WS_VISIBLE;
    options.rect = rect;
    options.classStyle = classStyle;
    options.handler = JustValidate;
    return options;
}

WindowOptions ShownChild(HWND parent, RECT rect, DWORD style = 0)
{
    WindowOptions options = Shown(rect);
    options.style = WS_CHILD | WS_VISIBLE | style;
    options.parent = parent;
    return options;
}

RECT PlaceOf(HWND window)
{
    RECT rect{};
    GetWindowRect(window, &rect);
    return rect;
}

// Of the window's own coordinates; all zeros when it has nothing to paint.
RECT UpdateOf(HWND window)
{
    RECT rect{};
    GetUpdateRect(window, &rect, FALSE);
    return rect;
}

TEST(WindowPosition, TheWindowIsAskedBeforeAndToldAfterwards)
{
    PositionedWindow window;
    window.Forget();
    EXPECT_TRUE(SetWindowPos(window, nullptr, 5, 6, 70, 80, SWP_NOZORDER | SWP_NOACTIVATE));
    EXPECT_EQ(window.Order({ WM_WINDOWPOSCHANGING, WM_WINDOWPOSCHANGED, WM_MOVE, WM_SIZE }),
              (std::vector<UINT>{ WM_WINDOWPOSCHANGING, WM_WINDOWPOSCHANGED, WM_MOVE, WM_SIZE }));
    for (const WINDOWPOS& told : { window.changing, window.changed }) {
        EXPECT_EQ(told.hwnd, static_cast<HWND>(window));
        EXPECT_EQ(told.x, 5);
        EXPECT_EQ(told.y, 6);
        EXPECT_EQ(told.cx, 70);
        EXPECT_EQ(told.cy, 80);
        EXPECT_EQ(told.flags & (SWP_NOMOVE | SWP_NOSIZE), 0U);
    }
    EXPECT_EQ(window.Last(WM_MOVE)->lParam, MAKELPARAM(5, 6));
    EXPECT_EQ(window.Last(WM_SIZE)->wParam, static_cast<WPARAM>(SIZE_RESTORED));
    EXPECT_EQ(window.Last(WM_SIZE)->lParam, MAKELPARAM(70, 80));
}

TEST(WindowPosition, WhatTheWindowChangesWhenAskedCounts)
{
    TestWindow window;
    window.Handle([](HWND, UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_WINDOWPOSCHANGING)
            reinterpret_cast<WINDOWPOS*>(lParam)->x = 33;
        return std::nullopt;
    });
    SetWindowPos(window, nullptr, 5, 6, 70, 80, SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(PlaceOf(window), (RECT{ 33, 6, 103, 86 }));
}

TEST(WindowPosition, FlagsKeepPlaceAndSize)
{
    PositionedWindow window;
    SetWindowPos(window, nullptr, 5, 6, 70, 80, SWP_NOZORDER | SWP_NOACTIVATE);
    SetWindowPos(window, nullptr, 1, 2, 30, 40, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(PlaceOf(window), (RECT{ 5, 6, 35, 46 }));
    SetWindowPos(window, nullptr, 1, 2, 99, 99, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(PlaceOf(window), (RECT{ 1, 2, 31, 42 }));
    EXPECT_EQ(window.changed.x, 1);
    EXPECT_EQ(window.changed.y, 2);
    EXPECT_EQ(window.changed.cx, 30);
    EXPECT_EQ(window.changed.cy, 40);
}

TEST(WindowPosition, OneEdgeThatChangesIsAChange)
{
    for (const RECT& wanted :
         { RECT{ 1, 0, 100, 100 }, RECT{ 0, 1, 100, 100 }, RECT{ 0, 0, 101, 100 }, RECT{ 0, 0, 100, 101 } }) {
        TestWindow window; // 100 x 100 at 0, 0
        window.Forget();
        SetWindowPos(window, nullptr, wanted.left, wanted.top, wanted.right, wanted.bottom,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        EXPECT_EQ(window.Count(WM_MOVE), wanted.left + wanted.top) << "place " << wanted.left << ", " << wanted.top;
        EXPECT_EQ(window.Count(WM_SIZE), wanted.right + wanted.bottom - 200);
    }
}

TEST(WindowPosition, NothingIsToldWhenNothingChanges)
{
    TestWindow window;
    window.Forget();
    EXPECT_TRUE(SetWindowPos(window, nullptr, 0, 0, 100, 100, SWP_NOZORDER | SWP_NOACTIVATE));
    EXPECT_EQ(window.Count(WM_WINDOWPOSCHANGED), 0);
}

TEST(WindowPosition, ANegativeSizeIsNone)
{
    TestWindow window;
    SetWindowPos(window, nullptr, 3, 4, -7, -8, SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(PlaceOf(window), (RECT{ 3, 4, 3, 4 }));
}

TEST(WindowPosition, ADeadWindowAndADeadNeighbourAreErrors)
{
    HWND dead = nullptr;
    {
        TestWindow window;
        dead = window;
    }
    EXPECT_FALSE(SetWindowPos(dead, nullptr, 0, 0, 1, 1, SWP_NOZORDER));
    EXPECT_FALSE(MoveWindow(dead, 0, 0, 1, 1, TRUE));
    TestWindow window;
    SetLastError(0);
    EXPECT_FALSE(SetWindowPos(window, dead, 9, 9, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE));
    EXPECT_EQ(PlaceOf(window), (RECT{ 0, 0, 100, 100 }));
    EXPECT_TRUE(SetWindowPos(window, dead, 9, 9, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE));
}

TEST(WindowPosition, MovingTakesPlaceThenWidthThenHeight)
{
    TestWindow window;
    EXPECT_TRUE(MoveWindow(window, 11, 12, 13, 14, TRUE));
    EXPECT_EQ(PlaceOf(window), (RECT{ 11, 12, 24, 26 }));
}

TEST(WindowPosition, MovingNeitherRaisesNorActivates)
{
    TestWindow below(Shown());
    TestWindow above(Shown());
    MoveWindow(below, 3, 4, 50, 40, TRUE);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(above));
    EXPECT_EQ(GetWindow(above, GW_HWNDNEXT), static_cast<HWND>(below));
}

TEST(WindowPosition, PlacingAShownWindowActivatesItUnlessToldOtherwise)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine activates nothing that keeps its order";
    TestWindow below(Shown());
    TestWindow above(Shown());
    SetWindowPos(below, nullptr, 3, 4, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(above));
    SetWindowPos(below, nullptr, 5, 4, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(below));
    TestWindow hidden;
    SetWindowPos(hidden, nullptr, 5, 4, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(below));
}

TEST(WindowPosition, PlacingAChildActivatesNothing)
{
    TestWindow below(Shown());
    TestWindow child(ShownChild(below, { 0, 0, 10, 10 }));
    TestWindow above(Shown());
    SetWindowPos(child, nullptr, 3, 4, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(above));
    SetWindowPos(child, HWND_TOP, 3, 4, 0, 0, SWP_NOSIZE);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(above));
}

TEST(WindowPosition, ShowingAndHidingThroughThePositionTellsTheFlags)
{
    PositionedWindow window;
    window.Forget();
    SetWindowPos(window, nullptr, 0, 0, 0, 0, kStay | SWP_SHOWWINDOW);
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_EQ(window.changed.flags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW), SWP_SHOWWINDOW);
    EXPECT_EQ(window.Count(WM_MOVE), 0);
    EXPECT_EQ(window.Count(WM_SIZE), 0);
    SetWindowPos(window, nullptr, 0, 0, 0, 0, kStay | SWP_HIDEWINDOW);
    EXPECT_FALSE(IsWindowVisible(window));
    EXPECT_EQ(window.changed.flags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW), SWP_HIDEWINDOW);
    window.Forget();
    SetWindowPos(window, nullptr, 0, 0, 0, 0, kStay | SWP_HIDEWINDOW);
    EXPECT_EQ(window.Count(WM_WINDOWPOSCHANGED), 0) << "it is hidden already";
}

TEST(WindowPosition, HidingThroughThePositionRaisesNothing)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine raises it";
    TestWindow below(Shown());
    TestWindow above(Shown());
    SetWindowPos(below, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_HIDEWINDOW);
    EXPECT_EQ(GetWindow(above, GW_HWNDNEXT), static_cast<HWND>(below));
}

TEST(WindowPosition, AMovedWindowPaintsItselfWholeAndItsParentWhereItStood)
{
    TestWindow parent(Shown({ 0, 0, 200, 200 }));
    TestWindow child(ShownChild(parent, { 10, 10, 20, 20 }));
    PumpMessages();
    MoveWindow(child, 50, 10, 20, 20, TRUE);
    EXPECT_EQ(UpdateOf(parent), (RECT{ 10, 10, 30, 30 }));
    PumpMessages();
    MoveWindow(child, 60, 10, 20, 20, FALSE);
    EXPECT_EQ(UpdateOf(parent), (RECT{}));
    EXPECT_EQ(UpdateOf(child), (RECT{}));
}

TEST(WindowPosition, AWindowThatGrowsPaintsWhatItGained)
{
    TestWindow window(Shown({ 0, 0, 50, 40 }));
    PumpMessages();
    SetWindowPos(window, nullptr, 0, 0, 60, 40, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(UpdateOf(window), (RECT{ 50, 0, 60, 40 }));
    PumpMessages();
    SetWindowPos(window, nullptr, 0, 0, 60, 45, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(UpdateOf(window), (RECT{ 0, 40, 60, 45 }));
}

TEST(WindowPosition, AClassMayAskToBePaintedWholeWhenItsWidthOrItsHeightChanges)
{
    TestWindow wide(Shown({ 0, 0, 50, 40 }, CS_HREDRAW));
    TestWindow high(Shown({ 100, 0, 50, 40 }, CS_VREDRAW));
    const auto size = [](HWND window, int width, int height) {
        PumpMessages();
        SetWindowPos(window, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        return UpdateOf(window);
    };
    EXPECT_EQ(size(wide, 60, 40), (RECT{ 0, 0, 60, 40 }));
    EXPECT_EQ(size(wide, 60, 45), (RECT{ 0, 40, 60, 45 }));
    EXPECT_EQ(size(high, 60, 40), (RECT{ 50, 0, 60, 40 }));
    EXPECT_EQ(size(high, 60, 45), (RECT{ 0, 0, 60, 45 }));
}

TEST(WindowPosition, RaisingAChildPaintsItWholeUnlessItYieldsToItsSiblings)
{
    TestWindow parent(Shown({ 0, 0, 100, 100 }));
    TestWindow above(ShownChild(parent, { 0, 0, 20, 20 }));
    TestWindow yielding(ShownChild(parent, { 10, 0, 20, 20 }, WS_CLIPSIBLINGS));
    TestWindow ruthless(ShownChild(parent, { 10, 10, 20, 20 }));
    PumpMessages();
    SetWindowPos(yielding, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_EQ(UpdateOf(yielding), (RECT{ 0, 0, 10, 20 }));
    EXPECT_EQ(UpdateOf(parent), (RECT{}));
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine paints nothing of a child that draws over its siblings";
    SetWindowPos(ruthless, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOREDRAW);
    EXPECT_EQ(UpdateOf(ruthless), (RECT{}));
    SetWindowPos(ruthless, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOREDRAW);
    SetWindowPos(ruthless, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_EQ(UpdateOf(ruthless), (RECT{ 0, 0, 20, 20 }));
}

TEST(WindowPosition, AWindowThatIsHiddenOwesNoPaint)
{
    TestWindow window(Shown());
    TestWindow child(ShownChild(window, { 0, 0, 10, 10 }));
    InvalidateRect(window, nullptr, TRUE);
    ShowWindow(window, SW_HIDE);
    EXPECT_EQ(UpdateOf(window), (RECT{}));
    EXPECT_EQ(UpdateOf(child), (RECT{}));
}

TEST(WindowPosition, AWindowThatIsShownOwesItselfWholeWithItsChildren)
{
    WindowOptions options = Shown();
    options.style = WS_POPUP | WS_CLIPCHILDREN;
    TestWindow window(options);
    TestWindow child(ShownChild(window, { 5, 5, 10, 10 }));
    ShowWindow(window, SW_SHOWNA);
    EXPECT_EQ(UpdateOf(window), (RECT{ 0, 0, 50, 40 }));
    EXPECT_EQ(UpdateOf(child), (RECT{ 0, 0, 10, 10 }));
}

TEST(WindowPosition, TheWindowIsToldThePlaceAndTheSizeThatItKeeps)
{
    PositionedWindow window;
    SetWindowPos(window, nullptr, 5, 6, 70, 80, SWP_NOZORDER | SWP_NOACTIVATE);
    SetWindowPos(window, nullptr, 0, 0, 0, 0, kStay | SWP_SHOWWINDOW);
    EXPECT_EQ(window.changed.x, 5);
    EXPECT_EQ(window.changed.y, 6);
    EXPECT_EQ(window.changed.cx, 70);
    EXPECT_EQ(window.changed.cy, 80);
}

bool IsBelow(HWND window, HWND above)
{
    HWND next = above;
    while (next != nullptr && next != window)
        next = GetWindow(next, GW_HWNDNEXT);
    return next == window;
}

TEST(WindowPosition, AWindowThatMayBecomeActiveGoesToTheTopWhateverPlaceIsNamed)
{
    TestWindow window; // hidden, so that nothing but its position raises it
    TestWindow above;
    SetWindowPos(window, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    EXPECT_TRUE(IsBelow(above, window));
    SetWindowPos(window, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_TRUE(IsBelow(window, above));
}

TEST(WindowPosition, AWindowThatKeepsItsOrderIsRaisedAllTheSameIfItMayBecomeActive)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine keeps its order";
    TestWindow window;
    TestWindow above;
    SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_EQ(GetWindow(window, GW_HWNDNEXT), static_cast<HWND>(above));
}

TEST(WindowPosition, AWindowThatIsHiddenGoesToTheBottomIfThatIsNamedButNeverToTheTop)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine raises it";
    TestWindow below(Shown());
    TestWindow above(Shown());
    SetWindowPos(below, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_HIDEWINDOW);
    EXPECT_EQ(GetWindow(above, GW_HWNDNEXT), static_cast<HWND>(below));
    SetWindowPos(above, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_HIDEWINDOW);
    EXPECT_EQ(GetWindow(below, GW_HWNDNEXT), static_cast<HWND>(above));
}

TEST(WindowPosition, AChildGoesWhereItIsPutThoughActivationIsNotExcluded)
{
    TestWindow parent(Shown());
    TestWindow first(ShownChild(parent, { 0, 0, 10, 10 }));
    TestWindow second(ShownChild(parent, { 0, 0, 10, 10 }));
    SetWindowPos(second, nullptr, 1, 1, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_EQ(GetWindow(parent, GW_CHILD), static_cast<HWND>(first));
    SetWindowPos(first, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    EXPECT_EQ(GetWindow(parent, GW_CHILD), static_cast<HWND>(second));
}

TEST(WindowPosition, TheBandIsChangedWithActivationToo)
{
    TestWindow window(Shown());
    SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    EXPECT_NE(GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
    SetWindowPos(window, HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    EXPECT_EQ(GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
}

TEST(WindowPosition, AnOwnedWindowThatIsRaisedWithItsOwnerPaintsWhatItGains)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine paints nothing of it";
    TestWindow owner(Shown({ 0, 0, 100, 100 }));
    auto options = Shown({ 10, 10, 20, 20 });
    options.parent = owner;
    TestWindow owned(options);
    TestWindow other(Shown({ 0, 0, 20, 100 }));
    PumpMessages();
    SetWindowPos(owner, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_EQ(UpdateOf(owned), (RECT{ 0, 0, 10, 20 }));
}

TEST(WindowPosition, RaisingAWindowThatStandsAboveItsOwnerAlreadyPaintsNothing)
{
    TestWindow owner(Shown({ 0, 0, 100, 100 }));
    auto options = Shown({ 10, 10, 20, 20 });
    options.parent = owner;
    TestWindow owned(options);
    PumpMessages();
    SetForegroundWindow(owned);
    EXPECT_EQ(UpdateOf(owned), (RECT{}));
    EXPECT_EQ(UpdateOf(owner), (RECT{}));
}

TEST(WindowPosition, TheActivationThatItBringsIsNoClick)
{
    TestWindow window;
    window.Forget();
    SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
    ASSERT_EQ(window.Count(WM_ACTIVATE), 1);
    EXPECT_EQ(LOWORD(window.Last(WM_ACTIVATE)->wParam), WA_ACTIVE);
}

} // namespace
