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

WindowOptions ShownChild(HWND parent)
{
    WindowOptions options;
    options.style = WS_CHILD | WS_VISIBLE;
    options.parent = parent;
    options.rect = { 0, 0, 10, 10 };
    return options;
}

TEST(Focus, MovingItTellsTheLoserThenTheWinner)
{
    TestWindow parent(Shown());
    TestWindow first(ShownChild(parent));
    TestWindow second(ShownChild(parent));
    SetFocus(first);
    first.Forget();
    EXPECT_EQ(SetFocus(second), static_cast<HWND>(first));
    ASSERT_EQ(first.Count(WM_KILLFOCUS), 1);
    EXPECT_EQ(first.Last(WM_KILLFOCUS)->wParam, reinterpret_cast<WPARAM>(static_cast<HWND>(second)));
    EXPECT_EQ(first.Last(WM_KILLFOCUS)->lParam, 0);
    ASSERT_EQ(second.Count(WM_SETFOCUS), 1);
    EXPECT_EQ(second.Last(WM_SETFOCUS)->wParam, reinterpret_cast<WPARAM>(static_cast<HWND>(first)));
    EXPECT_EQ(second.Last(WM_SETFOCUS)->lParam, 0);
    EXPECT_EQ(GetFocus(), static_cast<HWND>(second));
}

TEST(Focus, AFocusHandedOnWithinTheMessageStaysWhereItWasHanded)
{
    TestWindow parent(Shown());
    TestWindow first(ShownChild(parent));
    TestWindow second(ShownChild(parent));
    const HWND owner = parent;
    second.Handle([owner](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_SETFOCUS)
            SetFocus(owner);
        return std::nullopt;
    });
    SetFocus(second);
    EXPECT_EQ(GetFocus(), owner);
}

TEST(Focus, ADisabledWindowCannotTakeIt)
{
    TestWindow parent(Shown());
    TestWindow child(ShownChild(parent));
    SetFocus(parent);
    EnableWindow(child, FALSE);
    EXPECT_EQ(SetFocus(child), nullptr);
    EXPECT_EQ(GetFocus(), static_cast<HWND>(parent));
}

TEST(Focus, DisablingTheFocusedWindowTakesFocusAndCaptureButLeavesItsParentActive)
{
    TestWindow parent(Shown());
    TestWindow child(ShownChild(parent));
    SetFocus(child);
    SetCapture(child);
    EnableWindow(child, FALSE);
    EXPECT_EQ(GetFocus(), nullptr);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(parent));
    EXPECT_EQ(child.Count(WM_ENABLE), 1);
}

TEST(Focus, DisablingTheParentLeavesTheChildsFocusAlone)
{
    TestWindow parent(Shown());
    TestWindow child(ShownChild(parent));
    SetFocus(child);
    EnableWindow(parent, FALSE);
    EXPECT_EQ(GetFocus(), static_cast<HWND>(child));
    EnableWindow(parent, TRUE);
}

TEST(Focus, HidingTheFocusedChildMovesItToTheParent)
{
    TestWindow parent(Shown());
    TestWindow child(ShownChild(parent));
    SetFocus(child);
    ShowWindow(child, SW_HIDE);
    EXPECT_EQ(GetFocus(), static_cast<HWND>(parent));
}

TEST(Focus, HidingTheParentOfTheFocusedWindowLeavesIt)
{
    TestWindow grandparent(Shown());
    TestWindow parent(ShownChild(grandparent));
    TestWindow child(ShownChild(parent));
    SetFocus(child);
    ShowWindow(parent, SW_HIDE);
    EXPECT_EQ(GetFocus(), static_cast<HWND>(child));
}

TEST(Focus, HidingTheFocusedChildThroughItsPositionLeavesIt)
{
    TestWindow parent(Shown());
    TestWindow child(ShownChild(parent));
    SetFocus(child);
    SetWindowPos(child, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_HIDEWINDOW);
    EXPECT_EQ(GetFocus(), static_cast<HWND>(child));
}

TEST(Focus, EnablingReturnsWhetherTheWindowWasDisabled)
{
    TestWindow window;
    EXPECT_FALSE(EnableWindow(window, FALSE));
    EXPECT_TRUE(EnableWindow(window, FALSE));
    EXPECT_TRUE(EnableWindow(window, TRUE));
    EXPECT_FALSE(EnableWindow(window, TRUE));
    EXPECT_EQ(window.Count(WM_ENABLE), 2);
}

TEST(Activation, TheLoserIsToldBeforeTheWinnerAndTheFocusFollows)
{
    std::vector<std::pair<int, WPARAM>> order;
    const auto record = [&order](int who) -> MessageHandler {
        return [&order, who](HWND, UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_ACTIVATE)
                order.emplace_back(who, LOWORD(wParam));
            return std::nullopt;
        };
    };
    TestWindow first(Shown());
    TestWindow second(Shown());
    first.Handle(record(1));
    second.Handle(record(2));
    SetActiveWindow(first);
    order.clear();
    EXPECT_EQ(SetActiveWindow(second), static_cast<HWND>(first));
    const std::vector<std::pair<int, WPARAM>> expected{ { 1, WA_INACTIVE }, { 2, WA_ACTIVE } };
    EXPECT_EQ(order, expected);
    EXPECT_EQ(GetFocus(), static_cast<HWND>(second));
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(second));
}

TEST(Activation, ShowingATopLevelWindowActivatesItUnlessToldOtherwise)
{
    TestWindow first(Shown());
    TestWindow second;
    ShowWindow(second, SW_SHOWNOACTIVATE);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(first));
    ShowWindow(second, SW_HIDE);
    ShowWindow(second, SW_SHOW);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(second));
}

TEST(Activation, DestroyingTheActiveWindowActivatesItsOwner)
{
    TestWindow other(Shown());
    TestWindow owner(Shown());
    TestWindow above(Shown());
    auto options = Shown();
    options.parent = owner;
    TestWindow owned(options);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(owned));
    DestroyWindow(owned);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(owner));
}

TEST(Activation, SettingTheFocusOfAChildActivatesItsTopLevelWindow)
{
    TestWindow first(Shown());
    TestWindow child(ShownChild(first));
    TestWindow second(Shown());
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(second));
    SetFocus(child);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(first));
    EXPECT_EQ(GetFocus(), static_cast<HWND>(child));
}

TEST(Capture, TheLoserIsToldWhoTookIt)
{
    TestWindow first(Shown());
    TestWindow second(Shown());
    EXPECT_EQ(SetCapture(first), nullptr);
    EXPECT_EQ(SetCapture(second), static_cast<HWND>(first));
    ASSERT_EQ(first.Count(WM_CAPTURECHANGED), 1);
    EXPECT_EQ(first.Last(WM_CAPTURECHANGED)->lParam, reinterpret_cast<LPARAM>(static_cast<HWND>(second)));
    EXPECT_TRUE(ReleaseCapture());
    EXPECT_EQ(second.Count(WM_CAPTURECHANGED), 1);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST(Focus, AFocusHandedOnWhileItsLoserIsToldReachesNobodyElse)
{
    TestWindow parent(Shown());
    TestWindow first(ShownChild(parent));
    TestWindow second(ShownChild(parent));
    TestWindow third(ShownChild(parent));
    SetFocus(first);
    const HWND wanted = third;
    first.Handle([wanted](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_KILLFOCUS)
            SetFocus(wanted);
        return std::nullopt;
    });
    SetFocus(second);
    EXPECT_EQ(GetFocus(), wanted);
    EXPECT_EQ(second.Count(WM_SETFOCUS), 0);
}

TEST(Focus, SettingItWhereItIsTellsNobody)
{
    TestWindow parent(Shown());
    TestWindow child(ShownChild(parent));
    SetFocus(child);
    child.Forget();
    EXPECT_EQ(SetFocus(child), static_cast<HWND>(child));
    EXPECT_EQ(child.Count(WM_SETFOCUS), 0);
    EXPECT_EQ(child.Count(WM_KILLFOCUS), 0);
}

TEST(Focus, ItCanBeGivenUp)
{
    TestWindow window(Shown());
    EXPECT_EQ(GetFocus(), static_cast<HWND>(window));
    EXPECT_EQ(SetFocus(nullptr), static_cast<HWND>(window));
    EXPECT_EQ(GetFocus(), nullptr);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(window));
    EXPECT_EQ(window.Last(WM_KILLFOCUS)->wParam, 0U);
    EXPECT_EQ(SetFocus(window), nullptr);
    EXPECT_EQ(GetFocus(), static_cast<HWND>(window));
}

TEST(Focus, AChildOfADisabledWindowCannotTakeIt)
{
    TestWindow parent(Shown());
    TestWindow child(ShownChild(parent));
    SetFocus(parent);
    EnableWindow(parent, FALSE);
    EXPECT_EQ(SetFocus(child), nullptr);
    EXPECT_NE(GetFocus(), static_cast<HWND>(child));
}

TEST(Focus, ADeadWindowCannotTakeIt)
{
    TestWindow window(Shown());
    HWND dead = nullptr;
    {
        TestWindow other;
        dead = other;
    }
    SetLastError(0);
    EXPECT_EQ(SetFocus(dead), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE));
    EXPECT_EQ(GetFocus(), static_cast<HWND>(window));
}

TEST(Focus, AWindowThatDoesNotAskForItGetsItAllTheSame)
{
    TestWindow first(Shown());
    WindowOptions options = Shown();
    options.handler = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_ACTIVATE)
            return 0;
        return JustValidate(window, message, wParam, lParam);
    };
    TestWindow second(options);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(second));
    EXPECT_EQ(GetFocus(), static_cast<HWND>(second));
}

TEST(Focus, AWindowThatHandsItToItsChildKeepsItThere)
{
    WindowOptions options = Shown();
    options.style = WS_POPUP;
    TestWindow parent(options);
    TestWindow child(ShownChild(parent));
    const HWND inner = child;
    parent.Handle([inner](HWND, UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
        if (message != WM_ACTIVATE || LOWORD(wParam) == WA_INACTIVE)
            return std::nullopt;
        SetFocus(inner);
        return 0;
    });
    ShowWindow(parent, SW_SHOW);
    EXPECT_EQ(GetFocus(), inner);
}

TEST(Activation, EachIsToldOfTheOther)
{
    TestWindow first(Shown());
    TestWindow second(Shown());
    first.Forget();
    second.Forget();
    SetActiveWindow(first);
    ASSERT_EQ(second.Count(WM_ACTIVATE), 1);
    EXPECT_EQ(second.Last(WM_ACTIVATE)->lParam, reinterpret_cast<LPARAM>(static_cast<HWND>(first)));
    ASSERT_EQ(first.Count(WM_ACTIVATE), 1);
    EXPECT_EQ(first.Last(WM_ACTIVATE)->lParam, reinterpret_cast<LPARAM>(static_cast<HWND>(second)));
    first.Forget();
    EXPECT_EQ(SetActiveWindow(first), static_cast<HWND>(first));
    EXPECT_EQ(first.Count(WM_ACTIVATE), 0) << "it is active already";
}

TEST(Activation, SettingAChildActiveChangesNothing)
{
    TestWindow first(Shown());
    TestWindow child(ShownChild(first));
    TestWindow second(Shown());
    EXPECT_EQ(SetActiveWindow(child), static_cast<HWND>(second));
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(second));
}

TEST(Activation, ADeadWindowDoesNotBecomeActive)
{
    TestWindow window(Shown());
    HWND dead = nullptr;
    {
        TestWindow other;
        dead = other;
    }
    EXPECT_EQ(SetActiveWindow(dead), nullptr);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(window));
}

TEST(Activation, AWindowThatGoesWhileTheOtherIsToldDoesNotBecomeActive)
{
    TestWindow first(Shown());
    TestWindow second(Shown());
    const HWND doomed = first;
    second.Handle([doomed](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_ACTIVATE && LOWORD(wParam) == WA_INACTIVE && IsWindow(doomed))
            DestroyWindow(doomed);
        return JustValidate(window, message, wParam, lParam);
    });
    SetActiveWindow(first);
    EXPECT_FALSE(IsWindow(doomed));
    EXPECT_NE(GetActiveWindow(), doomed);
    EXPECT_NE(GetFocus(), doomed);
}

// A handler that destroys its window when it hears that another one becomes active.
std::optional<LRESULT> GoWhenInactive(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_ACTIVATE && LOWORD(wParam) == WA_INACTIVE)
        DestroyWindow(window);
    return JustValidate(window, message, wParam, lParam);
}

TEST(Activation, ALoserThatGoesWhileItIsToldLeavesItsPlaceToTheOther)
{
    TestWindow winner; // hidden: it is nobody's successor
    TestWindow loser(Shown());
    loser.Handle(GoWhenInactive);
    SetActiveWindow(winner);
    EXPECT_FALSE(IsWindow(loser));
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(winner));
    EXPECT_EQ(winner.Count(WM_ACTIVATE), 1);
}

TEST(Activation, TheOtherIsToldOnceWhenTheLoserGoesAndItIsTheSuccessorToo)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine activates it without telling it";
    TestWindow winner(Shown());
    TestWindow loser(Shown());
    loser.Handle(GoWhenInactive);
    winner.Forget();
    SetActiveWindow(winner);
    EXPECT_FALSE(IsWindow(loser));
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(winner));
    EXPECT_EQ(winner.Count(WM_ACTIVATE), 1);
}

TEST(Activation, TheOneChosenWhileTheLoserIsToldWins)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine activates the first one all the same";
    TestWindow first(Shown());
    TestWindow third(Shown());
    TestWindow second(Shown());
    const HWND chosen = third;
    bool hasChosen = false;
    second.Handle([&](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_ACTIVATE && LOWORD(wParam) == WA_INACTIVE && !std::exchange(hasChosen, true))
            SetActiveWindow(chosen);
        return JustValidate(window, message, wParam, lParam);
    });
    SetActiveWindow(first);
    EXPECT_EQ(GetActiveWindow(), chosen);
}

TEST(Activation, TheNextWindowIsNeitherHiddenNorDisabledNorUnwilling)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine takes another one";
    TestWindow willing(Shown());
    TestWindow hidden(Shown());
    ShowWindow(hidden, SW_HIDE);
    TestWindow disabled(Shown());
    EnableWindow(disabled, FALSE);
    WindowOptions options = Shown();
    options.exStyle = WS_EX_NOACTIVATE;
    TestWindow unwilling(options);
    TestWindow last(Shown());
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(last));
    ShowWindow(last, SW_HIDE);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(willing));
}

TEST(Activation, ADisabledOwnerIsPassedOver)
{
    TestWindow other(Shown());
    TestWindow owner(Shown());
    auto options = Shown();
    options.parent = owner;
    TestWindow owned(options);
    EnableWindow(owner, FALSE);
    DestroyWindow(owned);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(other));
    EnableWindow(owner, TRUE);
}

TEST(Activation, WithoutAnotherWindowNobodyIsActive)
{
    TestWindow window(Shown());
    ShowWindow(window, SW_HIDE);
    EXPECT_EQ(GetActiveWindow(), nullptr);
    EXPECT_EQ(GetFocus(), nullptr);
}

TEST(Foreground, AChildBringsItsTopLevelWindow)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine declines a child";
    TestWindow first(Shown());
    TestWindow child(ShownChild(first));
    TestWindow second(Shown());
    EXPECT_TRUE(SetForegroundWindow(child));
    EXPECT_EQ(GetForegroundWindow(), static_cast<HWND>(first));
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(first));
    EXPECT_EQ(LOWORD(first.Last(WM_ACTIVATE)->wParam), WA_ACTIVE);
}

TEST(Foreground, ADeadWindowCannotHaveIt)
{
    TestWindow window(Shown());
    HWND dead = nullptr;
    {
        TestWindow other;
        dead = other;
    }
    EXPECT_FALSE(SetForegroundWindow(dead));
    EXPECT_EQ(GetForegroundWindow(), static_cast<HWND>(window));
}

TEST(Capture, OnlyAWindowOfThisThreadCanHaveIt)
{
    TestWindow window(Shown());
    SetCapture(window);
    HWND dead = nullptr;
    {
        TestWindow other;
        dead = other;
    }
    EXPECT_EQ(SetCapture(dead), nullptr);
    EXPECT_EQ(GetCapture(), static_cast<HWND>(window));
    EXPECT_EQ(SetCapture(nullptr), static_cast<HWND>(window));
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(window.Last(WM_CAPTURECHANGED)->lParam, 0);
}

TEST(Capture, TheWindowThatTakesItAgainIsTold)
{
    TestWindow window(Shown());
    SetCapture(window);
    window.Forget();
    EXPECT_EQ(SetCapture(window), static_cast<HWND>(window));
    EXPECT_EQ(window.Count(WM_CAPTURECHANGED), 1);
    ReleaseCapture();
    EXPECT_EQ(window.Last(WM_CAPTURECHANGED)->lParam, 0);
    window.Forget();
    EXPECT_TRUE(ReleaseCapture());
    EXPECT_EQ(window.Count(WM_CAPTURECHANGED), 0);
}

TEST(Capture, ACancelledModeReleasesItFromThatWindowOnly)
{
    TestWindow first(Shown());
    TestWindow second(Shown());
    SetCapture(first);
    SendMessageW(second, WM_CANCELMODE, 0, 0);
    EXPECT_EQ(GetCapture(), static_cast<HWND>(first));
    SendMessageW(first, WM_CANCELMODE, 0, 0);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST(Focus, GivenUpByAWindowThatBecomesActiveItStaysWithNobody)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine gives it to the window";
    TestWindow window(Shown());
    TestWindow other(Shown());
    window.Handle([](HWND own, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_ACTIVATE && LOWORD(wParam) != WA_INACTIVE) {
            SetFocus(nullptr);
            return 0;
        }
        return JustValidate(own, message, wParam, lParam);
    });
    SetActiveWindow(window);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(window));
    EXPECT_EQ(GetFocus(), nullptr);
}

TEST(Focus, GivenUpInOneWindowItIsTakenByTheNextThatBecomesActive)
{
    TestWindow window(Shown());
    TestWindow other(Shown());
    window.Handle([](HWND own, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_ACTIVATE)
            return 0; // it does not ask for it
        return JustValidate(own, message, wParam, lParam);
    });
    SetFocus(nullptr);
    ASSERT_EQ(GetFocus(), nullptr);
    SetActiveWindow(window);
    EXPECT_EQ(GetFocus(), static_cast<HWND>(window));
}

} // namespace
