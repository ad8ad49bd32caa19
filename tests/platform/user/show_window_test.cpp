// Showing, hiding, enabling and disabling.
#include "tests/platform/user/pump.h"
#include "tests/platform/wine.h"

#include <gtest/gtest.h>

namespace {

WindowOptions Shown()
{
    WindowOptions options;
    options.style = WS_POPUP | WS_VISIBLE;
    options.handler = JustValidate;
    return options;
}

WindowOptions ChildOf(HWND parent, DWORD style = 0)
{
    WindowOptions options;
    options.style = WS_CHILD | style;
    options.parent = parent;
    options.rect = { 0, 0, 10, 10 };
    return options;
}

TEST(Showing, TellsWhetherTheWindowWasShownBefore)
{
    TestWindow window;
    EXPECT_FALSE(ShowWindow(window, SW_SHOW));
    EXPECT_TRUE(ShowWindow(window, SW_SHOW));
    EXPECT_TRUE(ShowWindow(window, SW_HIDE));
    EXPECT_FALSE(ShowWindow(window, SW_HIDE));
    EXPECT_FALSE(ShowWindow(nullptr, SW_SHOW));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE));
}

TEST(Showing, TheWindowHearsOfItBeforeItHappens)
{
    std::vector<BOOL> visible;
    TestWindow window;
    window.Handle([&visible](HWND own, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_SHOWWINDOW)
            visible.push_back(IsWindowVisible(own));
        return std::nullopt;
    });
    window.Forget();
    ShowWindow(window, SW_SHOW);
    EXPECT_EQ(window.Last(WM_SHOWWINDOW)->wParam, static_cast<WPARAM>(TRUE));
    EXPECT_EQ(window.Last(WM_SHOWWINDOW)->lParam, 0);
    ShowWindow(window, SW_HIDE);
    EXPECT_EQ(window.Last(WM_SHOWWINDOW)->wParam, static_cast<WPARAM>(FALSE));
    EXPECT_EQ(window.Last(WM_SHOWWINDOW)->lParam, 0);
    EXPECT_EQ(window.Count(WM_SHOWWINDOW), 2);
    EXPECT_EQ(visible, (std::vector<BOOL>{ FALSE, TRUE }));
}

TEST(Showing, AChildKeepsItsPlaceAmongItsSiblings)
{
    TestWindow parent(Shown());
    TestWindow lower(ChildOf(parent));
    TestWindow upper(ChildOf(parent, WS_VISIBLE));
    ASSERT_EQ(GetWindow(parent, GW_CHILD), static_cast<HWND>(lower));
    for (const int command : { SW_SHOW, SW_HIDE }) {
        ShowWindow(upper, command);
        EXPECT_EQ(GetWindow(parent, GW_CHILD), static_cast<HWND>(lower)) << command;
        EXPECT_EQ(GetWindow(lower, GW_HWNDNEXT), static_cast<HWND>(upper)) << command;
    }
}

TEST(Showing, HidingAHiddenWindowTellsNothing)
{
    TestWindow window;
    window.Forget();
    ShowWindow(window, SW_HIDE);
    EXPECT_TRUE(window.Seen().empty());
}

TEST(Showing, EachWayOfShowingShows)
{
    for (const int command : { SW_SHOWNORMAL, SW_SHOW, SW_SHOWNOACTIVATE, SW_SHOWNA }) {
        TestWindow window;
        ShowWindow(window, command);
        EXPECT_TRUE(IsWindowVisible(window)) << command;
    }
}

TEST(Showing, ShowingRaisesUnlessItIsWithoutActivation)
{
    struct Case {
        int command;
        bool raises;
        bool activates;
    };
    for (const auto& [command, raises, activates] :
         { Case{ SW_SHOW, true, true }, Case{ SW_SHOWNORMAL, true, true }, Case{ SW_SHOWNA, true, false },
           Case{ SW_SHOWNOACTIVATE, false, false } }) {
        TestWindow below;
        TestWindow above(Shown());
        ShowWindow(below, command);
        EXPECT_EQ(GetWindow(below, GW_HWNDNEXT) == static_cast<HWND>(above), raises) << command;
        EXPECT_EQ(GetActiveWindow() == static_cast<HWND>(below), activates) << command;
    }
}

TEST(Showing, AShownChildKeepsItsPlaceAmongItsSiblingsAndActivatesNothing)
{
    TestWindow parent(Shown());
    TestWindow first(ChildOf(parent, WS_VISIBLE));
    TestWindow second(ChildOf(parent));
    TestWindow other(Shown());
    ShowWindow(second, SW_SHOW);
    EXPECT_TRUE(IsWindowVisible(second));
    EXPECT_EQ(GetWindow(parent, GW_CHILD), static_cast<HWND>(first));
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(other));
    ShowWindow(first, SW_HIDE);
    EXPECT_EQ(GetWindow(parent, GW_CHILD), static_cast<HWND>(first));
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(other));
}

TEST(Showing, HidingTheActiveWindowActivatesTheNextOne)
{
    TestWindow below(Shown());
    TestWindow above(Shown());
    ShowWindow(above, SW_HIDE);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(below));
    EXPECT_EQ(GetFocus(), static_cast<HWND>(below));
}

TEST(Showing, HidingAnInactiveWindowActivatesNothing)
{
    TestWindow below(Shown());
    TestWindow middle(Shown());
    TestWindow above(Shown());
    above.Forget();
    ShowWindow(middle, SW_HIDE);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(above));
    EXPECT_EQ(above.Count(WM_ACTIVATE), 0);
}

TEST(Showing, HidingAChildWithoutTheFocusLeavesTheFocusAlone)
{
    TestWindow parent(Shown());
    TestWindow first(ChildOf(parent, WS_VISIBLE));
    TestWindow second(ChildOf(parent, WS_VISIBLE));
    SetFocus(first);
    ShowWindow(second, SW_HIDE);
    EXPECT_EQ(GetFocus(), static_cast<HWND>(first));
}

TEST(Enabling, TheWindowGivesUpItsModesBeforeItIsDisabledAndIsToldAfterwards)
{
    std::vector<BOOL> enabled;
    TestWindow window;
    window.Handle([&enabled](HWND own, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_CANCELMODE || message == WM_ENABLE)
            enabled.push_back(IsWindowEnabled(own));
        return std::nullopt;
    });
    window.Forget();
    EnableWindow(window, FALSE);
    EXPECT_EQ(window.Order({ WM_CANCELMODE, WM_ENABLE }), (std::vector<UINT>{ WM_CANCELMODE, WM_ENABLE }));
    EXPECT_EQ(enabled, (std::vector<BOOL>{ TRUE, FALSE }));
    EXPECT_EQ(window.Last(WM_ENABLE)->wParam, static_cast<WPARAM>(FALSE));
    window.Forget();
    EnableWindow(window, TRUE);
    EXPECT_EQ(window.Order({ WM_CANCELMODE, WM_ENABLE }), (std::vector<UINT>{ WM_ENABLE }));
    EXPECT_EQ(window.Last(WM_ENABLE)->wParam, static_cast<WPARAM>(TRUE));
}

TEST(Enabling, NothingIsToldWhenNothingChanges)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine cancels the mode of a disabled window";
    TestWindow window;
    window.Forget();
    EnableWindow(window, TRUE);
    EXPECT_TRUE(window.Seen().empty());
    EnableWindow(window, FALSE);
    window.Forget();
    EnableWindow(window, FALSE);
    EXPECT_TRUE(window.Seen().empty());
}

TEST(Enabling, AnotherWindowsFocusAndCaptureStay)
{
    TestWindow parent(Shown());
    TestWindow first(ChildOf(parent, WS_VISIBLE));
    TestWindow second(ChildOf(parent, WS_VISIBLE));
    SetFocus(first);
    SetCapture(first);
    EnableWindow(second, FALSE);
    EXPECT_EQ(GetFocus(), static_cast<HWND>(first));
    EXPECT_EQ(GetCapture(), static_cast<HWND>(first));
    ReleaseCapture();
}

TEST(Enabling, ADeadWindowWasNotDisabled)
{
    SetLastError(0);
    EXPECT_FALSE(EnableWindow(nullptr, FALSE));
    EXPECT_FALSE(EnableWindow(nullptr, TRUE));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE));
}

TEST(Showing, AChildIsAskedForNeitherActivationNorAnotherPlaceAmongItsSiblings)
{
    UINT flags = 0;
    TestWindow parent(Shown());
    TestWindow child(ChildOf(parent));
    child.Handle([&flags](HWND, UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_WINDOWPOSCHANGING)
            flags = reinterpret_cast<const WINDOWPOS*>(lParam)->flags;
        return std::nullopt;
    });
    constexpr UINT kStays = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOZORDER;
    ShowWindow(child, SW_SHOW);
    EXPECT_EQ(flags, kStays | SWP_SHOWWINDOW);
    ShowWindow(child, SW_HIDE);
    EXPECT_EQ(flags, kStays | SWP_HIDEWINDOW);
}

TEST(Showing, AWindowThatIsShownAlreadyIsRaisedByShowingItWithoutActivation)
{
    TestWindow below(Shown());
    TestWindow above(Shown());
    EXPECT_TRUE(ShowWindow(below, SW_SHOW));
    EXPECT_EQ(GetWindow(above, GW_HWNDNEXT), static_cast<HWND>(below));
    EXPECT_TRUE(ShowWindow(below, SW_SHOWNA));
    EXPECT_EQ(GetWindow(below, GW_HWNDNEXT), static_cast<HWND>(above));
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(above));
}

} // namespace
