// The longs that belong to each window.
#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

namespace {

LONG_PTR Value(HWND window)
{
    return reinterpret_cast<LONG_PTR>(window);
}

WindowOptions ChildOf(HWND parent)
{
    WindowOptions options;
    options.style = WS_CHILD;
    options.parent = parent;
    options.id = 12;
    return options;
}

TEST(WindowLongs, StyleIdAndOwnerAreReadBackAsTheWindowWasMade)
{
    TestWindow owner;
    WindowOptions options;
    options.style = WS_POPUP | WS_TABSTOP;
    options.exStyle = WS_EX_NOACTIVATE;
    options.parent = owner;
    TestWindow window(options);
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)), WS_POPUP | WS_TABSTOP | WS_CLIPSIBLINGS);
    EXPECT_NE(static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE)) & WS_EX_NOACTIVATE, 0U);
    EXPECT_EQ(GetWindowLongPtrW(window, GWLP_HWNDPARENT), Value(owner));
    EXPECT_EQ(GetWindowLongPtrW(owner, GWLP_HWNDPARENT), 0);
    TestWindow child(ChildOf(window));
    EXPECT_EQ(GetWindowLongPtrW(child, GWLP_HWNDPARENT), Value(window));
    EXPECT_EQ(GetWindowLongPtrW(child, GWLP_ID), 12);
}

TEST(WindowLongs, APopUpHasTheIdThatItWasMadeWithForThereAreNoMenus)
{
    WindowOptions options;
    options.style = WS_POPUP;
    options.id = 50;
    TestWindow window(options);
    ASSERT_NE(static_cast<HWND>(window), nullptr);
    EXPECT_EQ(GetWindowLongPtrW(window, GWLP_ID), 50);
    EXPECT_EQ(GetDlgCtrlID(window), 50);
}

TEST(WindowLongs, TheInstanceIsTheOneThatMadeTheWindow)
{
    int somewhere = 0;
    const auto instance = reinterpret_cast<HINSTANCE>(&somewhere);
    const HWND window =
        CreateWindowExW(0, TEXT("static"), nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, instance, nullptr);
    EXPECT_EQ(GetWindowLongPtrW(window, GWLP_HINSTANCE), reinterpret_cast<LONG_PTR>(instance));
    EXPECT_EQ(SetWindowLongPtrW(window, GWLP_HINSTANCE, 0x1230000), reinterpret_cast<LONG_PTR>(instance));
    EXPECT_EQ(GetWindowLongPtrW(window, GWLP_HINSTANCE), 0x1230000);
    DestroyWindow(window);
}

TEST(WindowLongs, WritingReturnsWhatStoodThereBefore)
{
    TestWindow parent;
    TestWindow child(ChildOf(parent));
    EXPECT_EQ(SetWindowLongPtrW(child, GWLP_ID, 34), 12);
    EXPECT_EQ(GetWindowLongPtrW(child, GWLP_ID), 34);
    EXPECT_EQ(GetDlgItem(parent, 34), static_cast<HWND>(child));
    const LONG_PTR own = GetWindowLongPtrW(child, GWLP_USERDATA);
    EXPECT_EQ(SetWindowLongPtrW(child, GWLP_USERDATA, own), own);
}

TEST(WindowLongs, AnIndexThatNoLongHasIsAnError)
{
    WindowOptions options;
    options.extraBytes = 16;
    TestWindow window(options);
    for (const int index : { 9, 16, -3 }) {
        SetLastError(0);
        EXPECT_EQ(GetWindowLongPtrW(window, index), 0) << index;
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_INDEX)) << index;
    }
    SetLastError(0);
    EXPECT_EQ(GetWindowLongPtrW(window, 8), 0);
    EXPECT_EQ(GetLastError(), 0U);
}

TEST(WindowLongs, TheOwnBytesOfAWindowDoNotOverlap)
{
    WindowOptions options;
    options.extraBytes = 16;
    TestWindow window(options);
    SetWindowLongPtrW(window, 0, 0x1122334455667788);
    SetWindowLongPtrW(window, 8, -1);
    EXPECT_EQ(SetWindowLongPtrW(window, 0, 5), 0x1122334455667788);
    EXPECT_EQ(GetWindowLongPtrW(window, 8), -1);
}

TEST(WindowLongs, ANewOwnerHoldsATopLevelWindowAboveItself)
{
    TestWindow window;
    TestWindow owner;
    EXPECT_EQ(SetWindowLongPtrW(window, GWLP_HWNDPARENT, Value(owner)), 0);
    EXPECT_EQ(GetWindow(window, GW_OWNER), static_cast<HWND>(owner));
    EXPECT_EQ(SetWindowLongPtrW(window, GWLP_HWNDPARENT, 0), Value(owner));
    EXPECT_EQ(GetWindow(window, GW_OWNER), nullptr);
}

TEST(WindowLongs, TheTopmostBandIsNotLeftByWritingTheStyle)
{
    TestWindow window;
    SetWindowLongPtrW(window, GWL_EXSTYLE, WS_EX_TOPMOST | WS_EX_NOACTIVATE);
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE)), WS_EX_NOACTIVATE);
    SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SetWindowLongPtrW(window, GWL_EXSTYLE, 0);
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE)), WS_EX_TOPMOST);
}

TEST(WindowLongs, ATopLevelWindowAlwaysYieldsToItsSiblings)
{
    TestWindow window;
    SetWindowLongPtrW(window, GWL_STYLE, static_cast<LONG_PTR>(WS_POPUP | WS_VISIBLE));
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)), WS_POPUP | WS_VISIBLE | WS_CLIPSIBLINGS);
    EXPECT_TRUE(IsWindowVisible(window));
    TestWindow child(ChildOf(window));
    SetWindowLongPtrW(child, GWL_STYLE, static_cast<LONG_PTR>(WS_CHILD | WS_TABSTOP));
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongPtrW(child, GWL_STYLE)), WS_CHILD | WS_TABSTOP);
}

TEST(WindowLongs, ADeadWindowHasNone)
{
    SetLastError(0);
    EXPECT_EQ(GetWindowLongPtrW(nullptr, GWL_STYLE), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE));
    SetLastError(0);
    EXPECT_EQ(SetWindowLongPtrW(nullptr, GWLP_ID, 1), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE));
}

TEST(WindowLongs, AChildHasNoOwnerWhateverIsWritten)
{
    TestWindow parent;
    TestWindow child(ChildOf(parent));
    SetWindowLongPtrW(child, GWLP_HWNDPARENT, Value(parent));
    EXPECT_EQ(GetWindow(child, GW_OWNER), nullptr);
    EXPECT_EQ(GetWindowLongPtrW(child, GWLP_HWNDPARENT), Value(parent));
}

} // namespace
