#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

namespace {

TEST(Window, BirthIsToldInOrder)
{
    TestWindow window;
    const std::vector<UINT> expected{ WM_NCCREATE, WM_CREATE, WM_SIZE, WM_MOVE };
    EXPECT_EQ(window.Order({ WM_NCCREATE, WM_CREATE, WM_SIZE, WM_MOVE, WM_SHOWWINDOW }), expected);
}

TEST(Window, CreateAnsweringMinusOneMakesNoWindow)
{
    WindowOptions options;
    options.handler = [](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_CREATE)
            return -1;
        return std::nullopt;
    };
    TestWindow window(options);
    EXPECT_EQ(static_cast<HWND>(window), nullptr);
    EXPECT_EQ(window.Count(WM_NCDESTROY), 1);
}

TEST(Window, AHandleOfADestroyedWindowStaysDead)
{
    TestWindow first;
    const HWND dead = first;
    DestroyWindow(first);
    TestWindow second;
    EXPECT_FALSE(IsWindow(dead));
    EXPECT_NE(static_cast<HWND>(second), dead);
    EXPECT_FALSE(PostMessageW(dead, WM_USER, 0, 0));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE));
    EXPECT_FALSE(IsWindow(nullptr));
}

TEST(Window, ParentsLearnOfTheirEndBeforeTheirChildrenAndFinishAfterThem)
{
    std::vector<std::pair<int, UINT>> order;
    const auto record = [&](int who) -> MessageHandler {
        return [&order, who](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_DESTROY || message == WM_NCDESTROY)
                order.emplace_back(who, message);
            return std::nullopt;
        };
    };
    WindowOptions parentOptions;
    parentOptions.handler = record(1);
    TestWindow parent(parentOptions);
    WindowOptions childOptions;
    childOptions.style = WS_CHILD;
    childOptions.parent = parent;
    childOptions.handler = record(2);
    TestWindow child(childOptions);
    EXPECT_TRUE(DestroyWindow(parent));
    const std::vector<std::pair<int, UINT>> expected{
        { 1, WM_DESTROY }, { 2, WM_DESTROY }, { 2, WM_NCDESTROY }, { 1, WM_NCDESTROY }
    };
    EXPECT_EQ(order, expected);
    EXPECT_FALSE(IsWindow(child));
}

TEST(Window, OwnedWindowsGoWithTheirOwner)
{
    TestWindow owner;
    WindowOptions options;
    options.parent = owner;
    TestWindow owned(options);
    EXPECT_EQ(GetWindow(owned, GW_OWNER), static_cast<HWND>(owner));
    EXPECT_EQ(GetParent(owned), static_cast<HWND>(owner));
    DestroyWindow(owner);
    EXPECT_FALSE(IsWindow(owned));
}

TEST(Window, CloseLeftToTheDefaultDestroys)
{
    TestWindow window;
    SendMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindow(window));
}

TEST(Window, AChildNeedsAParent)
{
    EXPECT_EQ(CreateWindowExW(0, TEXT("static"), nullptr, WS_CHILD, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr),
              nullptr);
}

TEST(Window, ItsOwnBytesAreBounded)
{
    WindowOptions options;
    options.extraBytes = 16;
    TestWindow window(options);
    EXPECT_EQ(SetWindowLongPtrW(window, 8, 77), 0);
    EXPECT_EQ(GetWindowLongPtrW(window, 8), 77);
    EXPECT_EQ(GetWindowLongPtrW(window, 0), 0);
    EXPECT_EQ(SetWindowLongPtrW(window, 16, 5), 0);
    EXPECT_EQ(GetWindowLongPtrW(window, 16), 0);
}

LRESULT CALLBACK Answer42(HWND, UINT, WPARAM, LPARAM)
{
    return 42;
}

TEST(Window, ANewProcedureTakesOverAndTheOldOneCanBeCalled)
{
    WindowOptions options;
    options.handler = [](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_USER)
            return 7;
        return std::nullopt;
    };
    TestWindow window(options);
    const LONG_PTR old = SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Answer42));
    EXPECT_EQ(SendMessageW(window, WM_USER, 0, 0), 42);
    EXPECT_EQ(CallWindowProcW(reinterpret_cast<WNDPROC>(old), window, WM_USER, 0, 0), 7);
    SetWindowLongPtrW(window, GWLP_WNDPROC, old);
    EXPECT_EQ(SendMessageW(window, WM_USER, 0, 0), 7);
}

TEST(Window, MovingTellsPlaceAndSizeOnlyWhereTheyChange)
{
    TestWindow window;
    window.Forget();
    MoveWindow(window, 10, 20, 100, 100, TRUE);
    EXPECT_EQ(window.Count(WM_SIZE), 0);
    ASSERT_EQ(window.Count(WM_MOVE), 1);
    EXPECT_EQ(window.Last(WM_MOVE)->lParam, MAKELPARAM(10, 20));
    RECT rect{};
    GetWindowRect(window, &rect);
    EXPECT_EQ(rect, (RECT{ 10, 20, 110, 120 }));
    window.Forget();
    SetWindowPos(window, nullptr, 0, 0, 30, 40, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    ASSERT_EQ(window.Count(WM_SIZE), 1);
    EXPECT_EQ(window.Last(WM_SIZE)->lParam, MAKELPARAM(30, 40));
    EXPECT_EQ(window.Count(WM_MOVE), 0);
}

TEST(Window, PointsGoFromClientToScreenAndBack)
{
    WindowOptions options;
    options.rect = { 30, 40, 100, 100 };
    TestWindow parent(options);
    options.style = WS_CHILD;
    options.parent = parent;
    options.rect = { 5, 6, 10, 10 };
    TestWindow child(options);
    POINT point{ 1, 2 };
    ClientToScreen(child, &point);
    EXPECT_EQ(point.x, 36);
    EXPECT_EQ(point.y, 48);
    ScreenToClient(child, &point);
    EXPECT_EQ(point.x, 1);
    EXPECT_EQ(point.y, 2);
}

TEST(Window, AChildIsVisibleOnlyIfItsParentIs)
{
    TestWindow parent;
    WindowOptions options;
    options.style = WS_CHILD | WS_VISIBLE;
    options.parent = parent;
    TestWindow child(options);
    EXPECT_FALSE(IsWindowVisible(child));
    EXPECT_FALSE(ShowWindow(parent, SW_SHOWNA));
    EXPECT_TRUE(IsWindowVisible(child));
    EXPECT_TRUE(ShowWindow(parent, SW_HIDE));
    EXPECT_FALSE(IsWindowVisible(child));
}

// SetRedraw through the default procedure hides the window without a message, and shows it again.
TEST(Window, RedrawOffClearsTheVisibleStyleAndOnSetsIt)
{
    WindowOptions options;
    options.style = WS_POPUP | WS_VISIBLE;
    TestWindow window(options);
    SendMessageW(window, WM_SETREDRAW, FALSE, 0);
    EXPECT_FALSE(IsWindowVisible(window));
    SendMessageW(window, WM_SETREDRAW, TRUE, 0);
    EXPECT_TRUE(IsWindowVisible(window));
}

TEST(Window, TheOwningThreadIsKnown)
{
    TestWindow window;
    DWORD process = 0;
    EXPECT_EQ(GetWindowThreadProcessId(window, &process), GetCurrentThreadId());
    EXPECT_NE(process, 0U);
    EXPECT_EQ(GetWindowThreadProcessId(nullptr, nullptr), 0U);
}

} // namespace
