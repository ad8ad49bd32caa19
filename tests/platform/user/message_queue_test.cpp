#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

namespace {

MSG Take(HWND window = nullptr)
{
    MSG message{};
    if (!PeekMessageW(&message, window, 0, 0, PM_REMOVE))
        message.message = WM_NULL;
    return message;
}

TEST(MessageQueue, PostedMessagesComeInOrderWithTheirParameters)
{
    TestWindow window;
    PumpMessages();
    EXPECT_TRUE(PostMessageW(window, WM_USER + 1, 2, 3));
    EXPECT_TRUE(PostMessageW(window, WM_USER + 4, 5, -6));
    const MSG first = Take(window);
    EXPECT_EQ(first.message, static_cast<UINT>(WM_USER + 1));
    EXPECT_EQ(first.wParam, 2U);
    EXPECT_EQ(first.lParam, 3);
    EXPECT_EQ(first.hwnd, static_cast<HWND>(window));
    const MSG second = Take(window);
    EXPECT_EQ(second.message, static_cast<UINT>(WM_USER + 4));
    EXPECT_EQ(second.lParam, -6);
}

TEST(MessageQueue, AMessageLookedAtStaysInTheQueue)
{
    TestWindow window;
    PumpMessages();
    PostMessageW(window, WM_USER, 0, 0);
    MSG message{};
    EXPECT_TRUE(PeekMessageW(&message, window, WM_USER, WM_USER, PM_NOREMOVE));
    EXPECT_TRUE(PeekMessageW(&message, window, WM_USER, WM_USER, PM_REMOVE));
    EXPECT_FALSE(PeekMessageW(&message, window, WM_USER, WM_USER, PM_REMOVE));
}

TEST(MessageQueue, AFilterTakesOnlyItsRangeAndItsWindowWithChildren)
{
    TestWindow parent;
    WindowOptions options;
    options.style = WS_CHILD;
    options.parent = parent;
    TestWindow child(options);
    TestWindow other;
    PumpMessages();
    PostMessageW(other, WM_USER, 1, 0);
    PostMessageW(child, WM_USER + 1, 2, 0);
    PostMessageW(child, WM_USER + 2, 3, 0);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, parent, WM_USER + 2, WM_USER + 3, PM_REMOVE));
    EXPECT_EQ(message.wParam, 3U);
    ASSERT_TRUE(PeekMessageW(&message, parent, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.wParam, 2U);
    EXPECT_FALSE(PeekMessageW(&message, parent, WM_USER, WM_USER + 9, PM_REMOVE));
    ASSERT_TRUE(PeekMessageW(&message, other, WM_USER, WM_USER, PM_REMOVE));
}

// Fact: quitting is a flag that shows when the posted queue is empty, once, without a window.
TEST(MessageQueue, QuitComesAfterMessagesPostedLaterAndOnlyOnce)
{
    TestWindow window;
    PumpMessages();
    PostQuitMessage(5);
    PostMessageW(window, WM_USER, 0, 0);
    EXPECT_EQ(Take().message, static_cast<UINT>(WM_USER));
    const MSG quit = Take();
    EXPECT_EQ(quit.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(quit.wParam, 5U);
    EXPECT_EQ(quit.hwnd, nullptr);
    EXPECT_NE(Take().message, static_cast<UINT>(WM_QUIT));
}

TEST(MessageQueue, GetMessageReturnsZeroForQuit)
{
    PumpMessages();
    PostQuitMessage(9);
    MSG message{};
    EXPECT_EQ(GetMessageW(&message, nullptr, 0, 0), 0);
    EXPECT_EQ(message.wParam, 9U);
}

TEST(MessageQueue, GetMessageForADeadWindowFails)
{
    HWND dead = nullptr;
    {
        TestWindow window;
        dead = window;
    }
    MSG message{};
    EXPECT_EQ(GetMessageW(&message, dead, 0, 0), -1);
}

TEST(MessageQueue, ABroadcastReachesTopLevelWindowsButNotChildren)
{
    TestWindow first;
    TestWindow second;
    WindowOptions options;
    options.style = WS_CHILD;
    options.parent = first;
    TestWindow child(options);
    const UINT number = RegisterWindowMessageW(TEXT("CARDSONG_TEST_BROADCAST"));
    EXPECT_TRUE(PostMessageW(HWND_BROADCAST, number, 1, 2));
    PumpMessages();
    EXPECT_EQ(first.Count(number), 1);
    EXPECT_EQ(second.Count(number), 1);
    EXPECT_EQ(child.Count(number), 0);
}

TEST(MessageQueue, MessagesOfADestroyedWindowAreDropped)
{
    PumpMessages();
    {
        TestWindow window;
        PostMessageW(window, WM_USER + 7, 0, 0);
    }
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_USER + 7, WM_USER + 7, PM_REMOVE));
}

TEST(MessageQueue, SendingReturnsTheAnswerAtOnce)
{
    WindowOptions options;
    options.handler = [](HWND, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_USER)
            return static_cast<LRESULT>(wParam) + lParam;
        return std::nullopt;
    };
    TestWindow window(options);
    EXPECT_EQ(SendMessageW(window, WM_USER, 40, 2), 42);
    EXPECT_EQ(SendMessageW(nullptr, WM_USER, 40, 2), 0);
}

TEST(MessageQueue, AMessageWithoutAWindowGoesToTheThread)
{
    PumpMessages();
    PostMessageW(nullptr, WM_USER + 3, 1, 0);
    const MSG message = Take();
    EXPECT_EQ(message.message, static_cast<UINT>(WM_USER + 3));
    EXPECT_EQ(message.hwnd, nullptr);
    EXPECT_EQ(DispatchMessageW(&message), 0);
}

TEST(MessageQueue, AClassMaskHoldsBackOtherClasses)
{
    TestWindow window;
    PumpMessages();
    PostMessageW(window, WM_USER, 0, 0);
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_PAINT));
    EXPECT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_POSTMESSAGE));
}

TEST(MessageQueue, TranslatingAKeyPostsItsCharacter)
{
    TestWindow window;
    PumpMessages();
    MSG key{};
    key.hwnd = window;
    key.message = WM_KEYDOWN;
    key.wParam = VK_RETURN;
    key.lParam = 0x001C0001; // once, with the scan code of Enter
    EXPECT_TRUE(TranslateMessage(&key));
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, window, WM_CHAR, WM_CHAR, PM_REMOVE));
    EXPECT_EQ(message.wParam, static_cast<WPARAM>('\r'));
    key.message = WM_USER;
    EXPECT_FALSE(TranslateMessage(&key));
}

TEST(MessageQueue, AThreadTimerGetsAFreshIdAndIsReplacedUnderIt)
{
    const UINT_PTR id = SetTimer(nullptr, 0, 60000, nullptr);
    ASSERT_NE(id, 0U);
    EXPECT_EQ(SetTimer(nullptr, id, 50000, nullptr), id);
    EXPECT_TRUE(KillTimer(nullptr, id));
    EXPECT_FALSE(KillTimer(nullptr, id));
}

TEST(MessageQueue, AWindowTimerKeepsItsId)
{
    TestWindow window;
    EXPECT_NE(SetTimer(window, 1000, 60000, nullptr), 0U);
    EXPECT_NE(SetTimer(window, 1000, 50000, nullptr), 0U);
    EXPECT_TRUE(KillTimer(window, 1000));
    EXPECT_FALSE(KillTimer(window, 1000));
}

} // namespace
