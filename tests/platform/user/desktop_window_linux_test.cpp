// The desktop window of the layer: it belongs to no thread, and nobody can change it.
#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

namespace {

class DesktopWindow : public testing::Test {
protected:
    const HWND m_desktop = GetDesktopWindow();
};

TEST_F(DesktopWindow, TakesNoMessages)
{
    EXPECT_EQ(PostMessageW(m_desktop, WM_USER, 0, 0), FALSE);
    EXPECT_EQ(SendMessageW(m_desktop, WM_USER, 0, 0), 0);
    MSG message{};
    message.hwnd = m_desktop;
    message.message = WM_USER;
    EXPECT_EQ(DispatchMessageW(&message), 0);
}

TEST_F(DesktopWindow, HasNoTimers)
{
    EXPECT_EQ(SetTimer(m_desktop, 1, 100, nullptr), 0U);
    EXPECT_FALSE(KillTimer(m_desktop, 1));
}

TEST_F(DesktopWindow, StaysWhereAndAsItIs)
{
    EXPECT_FALSE(SetWindowPos(m_desktop, HWND_TOP, 5, 5, 10, 10, 0));
    EXPECT_FALSE(MoveWindow(m_desktop, 5, 5, 10, 10, TRUE));
    EXPECT_FALSE(ShowWindow(m_desktop, SW_HIDE));
    EXPECT_FALSE(EnableWindow(m_desktop, FALSE));
    EXPECT_FALSE(DestroyWindow(m_desktop));
    EXPECT_TRUE(IsWindow(m_desktop));
    EXPECT_TRUE(IsWindowVisible(m_desktop));
    EXPECT_TRUE(IsWindowEnabled(m_desktop));
    RECT rect{};
    EXPECT_TRUE(GetWindowRect(m_desktop, &rect));
    EXPECT_EQ(rect, (RECT{ 0, 0, 320, 240 }));
}

TEST_F(DesktopWindow, TakesNeitherFocusNorCaptureNorForeground)
{
    EXPECT_EQ(SetFocus(m_desktop), nullptr);
    EXPECT_EQ(SetCapture(m_desktop), nullptr);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_FALSE(SetForegroundWindow(m_desktop));
    EXPECT_EQ(SetActiveWindow(m_desktop), nullptr);
}

TEST_F(DesktopWindow, HasNoLongsAndNoThread)
{
    EXPECT_EQ(GetWindowLongPtrW(m_desktop, GWL_STYLE), 0);
    EXPECT_EQ(SetWindowLongPtrW(m_desktop, GWLP_USERDATA, 5), 0);
    EXPECT_EQ(GetWindowLongPtrW(m_desktop, GWLP_USERDATA), 0);
    EXPECT_EQ(SetWindowLongPtrW(m_desktop, GWL_STYLE, 0), 0);
    EXPECT_TRUE(IsWindowVisible(m_desktop));
    EXPECT_EQ(GetWindowThreadProcessId(m_desktop, nullptr), 0U);
}

TEST_F(DesktopWindow, OwesNoPaint)
{
    PAINTSTRUCT paint{};
    EXPECT_EQ(InvalidateRect(m_desktop, nullptr, TRUE), TRUE);
    EXPECT_FALSE(GetUpdateRect(m_desktop, nullptr, FALSE));
    EXPECT_EQ(BeginPaint(m_desktop, &paint), nullptr);
    EXPECT_TRUE(UpdateWindow(m_desktop));
}

TEST_F(DesktopWindow, OwnsNoWindowThatNamesItAsItsParent)
{
    WindowOptions options;
    options.parent = m_desktop;
    TestWindow window(options);
    EXPECT_EQ(GetWindow(window, GW_OWNER), nullptr);
    EXPECT_EQ(GetParent(window), nullptr);
}

} // namespace
