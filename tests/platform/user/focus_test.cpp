#include "tests/platform/user/pump.h"

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
    ASSERT_EQ(second.Count(WM_SETFOCUS), 1);
    EXPECT_EQ(second.Last(WM_SETFOCUS)->wParam, reinterpret_cast<WPARAM>(static_cast<HWND>(first)));
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

} // namespace
