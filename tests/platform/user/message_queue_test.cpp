#include "tests/platform/user/pump.h"
#include "tests/platform/wine.h"

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

TEST(MessageQueue, AFilterKeepsTheOrderOfWhatItLeaves)
{
    TestWindow window;
    PumpMessages();
    for (const UINT number : { 1U, 2U, 3U })
        PostMessageW(window, WM_USER + number, 0, 0);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_USER + 2, WM_USER + 2, PM_REMOVE));
    EXPECT_EQ(Take(window).message, static_cast<UINT>(WM_USER + 1));
    EXPECT_EQ(Take(window).message, static_cast<UINT>(WM_USER + 3));
}

TEST(MessageQueue, ARangeTakesBothItsEnds)
{
    TestWindow window;
    PumpMessages();
    for (const UINT number : { 1U, 2U, 3U, 4U })
        PostMessageW(window, WM_USER + number, 0, 0);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_USER + 2, WM_USER + 3, PM_REMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_USER + 2));
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_USER + 2, WM_USER + 3, PM_REMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_USER + 3));
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_USER + 2, WM_USER + 3, PM_REMOVE));
    PumpMessages();
}

TEST(MessageQueue, ARangeFromZeroEndsAtItsLast)
{
    TestWindow window;
    PumpMessages();
    PostMessageW(window, WM_USER + 1, 0, 0);
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, window, 0, WM_USER, PM_REMOVE));
    EXPECT_TRUE(PeekMessageW(&message, window, 0, WM_USER + 1, PM_REMOVE));
}

TEST(MessageQueue, TheThreadsOwnMessagesCanBeAskedForAlone)
{
    TestWindow window;
    PumpMessages();
    PostMessageW(window, WM_USER + 1, 0, 0);
    PostMessageW(nullptr, WM_USER + 2, 0, 0);
    const auto nobody = reinterpret_cast<HWND>(static_cast<LONG_PTR>(-1));
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, nobody, WM_USER, WM_USER + 9, PM_REMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_USER + 2));
    EXPECT_FALSE(PeekMessageW(&message, nobody, WM_USER, WM_USER + 9, PM_REMOVE));
    EXPECT_TRUE(PeekMessageW(&message, window, WM_USER, WM_USER + 9, PM_REMOVE));
}

TEST(MessageQueue, AMessageWithoutAWindowIsNoWindows)
{
    TestWindow window;
    PumpMessages();
    PostMessageW(nullptr, WM_USER + 2, 0, 0);
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, window, WM_USER, WM_USER + 9, PM_REMOVE));
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_USER, WM_USER + 9, PM_REMOVE));
}

TEST(MessageQueue, PeekingForADeadWindowFails)
{
    HWND dead = nullptr;
    {
        TestWindow window;
        dead = window;
    }
    PumpMessages();
    PostMessageW(nullptr, WM_USER, 0, 0);
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, dead, 0, 0, PM_REMOVE));
    EXPECT_EQ(Take().message, static_cast<UINT>(WM_USER));
}

TEST(MessageQueue, QuitThatWasLookedAtStays)
{
    PumpMessages();
    PostQuitMessage(3);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(Take().wParam, 3U);
    EXPECT_EQ(Take().message, static_cast<UINT>(WM_NULL));
}

TEST(MessageQueue, GetMessageReturnsOneForAMessageAndHandsItOut)
{
    TestWindow window;
    PumpMessages();
    PostMessageW(window, WM_USER + 5, 6, 7);
    MSG message{};
    EXPECT_EQ(GetMessageW(&message, nullptr, 0, 0), TRUE);
    EXPECT_EQ(message.message, static_cast<UINT>(WM_USER + 5));
    EXPECT_EQ(message.wParam, 6U);
    EXPECT_EQ(message.lParam, 7);
    EXPECT_EQ(DispatchMessageW(&message), 0);
    EXPECT_EQ(window.Count(WM_USER + 5), 1);
}

TEST(MessageQueue, DispatchingReturnsTheAnswerOfTheWindow)
{
    TestWindow window;
    window.Handle([](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_USER)
            return 17;
        return std::nullopt;
    });
    MSG message{};
    message.hwnd = window;
    message.message = WM_USER;
    EXPECT_EQ(DispatchMessageW(&message), 17);
    HWND dead = nullptr;
    {
        TestWindow other;
        dead = other;
    }
    message.hwnd = dead;
    EXPECT_EQ(DispatchMessageW(&message), 0);
}

TEST(MessageQueue, ASentBroadcastReachesTopLevelWindowsButNotChildren)
{
    TestWindow first;
    TestWindow second;
    WindowOptions options;
    options.style = WS_CHILD;
    options.parent = first;
    TestWindow child(options);
    const UINT number = RegisterWindowMessageW(TEXT("CARDSONG_TEST_SENT_BROADCAST"));
    EXPECT_EQ(SendMessageW(HWND_BROADCAST, number, 1, 2), TRUE);
    EXPECT_EQ(first.Count(number), 1);
    EXPECT_EQ(second.Count(number), 1);
    EXPECT_EQ(second.Last(number)->wParam, 1U);
    EXPECT_EQ(second.Last(number)->lParam, 2);
    EXPECT_EQ(child.Count(number), 0);
}

TEST(MessageQueue, APostedBroadcastCarriesItsParametersToEachWindow)
{
    TestWindow window;
    PumpMessages();
    const UINT number = RegisterWindowMessageW(TEXT("CARDSONG_TEST_BROADCAST"));
    PostMessageW(HWND_BROADCAST, number, 3, 4);
    const MSG message = Take(window);
    EXPECT_EQ(message.hwnd, static_cast<HWND>(window));
    EXPECT_EQ(message.message, number);
    EXPECT_EQ(message.wParam, 3U);
    EXPECT_EQ(message.lParam, 4);
    PumpMessages();
}

TEST(MessageQueue, KeysAndTheirCharacters)
{
    TestWindow window;
    PumpMessages();
    struct Case {
        WPARAM key;
        WPARAM character; // 0: none
    };
    for (const auto& [key, character] :
         { Case{ VK_TAB, '\t' }, Case{ VK_RETURN, '\r' }, Case{ VK_ESCAPE, 0x1B }, Case{ VK_SPACE, ' ' }, Case{ 8, 8 },
           Case{ '0', '0' }, Case{ '9', '9' }, Case{ 'A', 'a' }, Case{ 'Z', 'z' }, Case{ VK_LEFT, 0 },
           Case{ VK_SHIFT, 0 }, Case{ VK_F24, 0 } }) {
        MSG stroke{};
        stroke.hwnd = window;
        stroke.message = WM_KEYDOWN;
        stroke.wParam = key;
        stroke.lParam = 0x00010001;
        EXPECT_TRUE(TranslateMessage(&stroke)) << key;
        MSG message{};
        const BOOL found = PeekMessageW(&message, window, WM_CHAR, WM_CHAR, PM_REMOVE);
        EXPECT_EQ(found, character != 0 ? TRUE : FALSE) << key;
        EXPECT_EQ(message.wParam, character) << key;
    }
}

TEST(MessageQueue, AKeyThatGoesUpIsTranslatedToNothing)
{
    TestWindow window;
    PumpMessages();
    MSG message{};
    for (const UINT up : { WM_KEYUP, WM_SYSKEYUP }) {
        MSG stroke{};
        stroke.hwnd = window;
        stroke.message = up;
        stroke.wParam = 'A';
        EXPECT_TRUE(TranslateMessage(&stroke));
        EXPECT_FALSE(PeekMessageW(&message, window, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE));
    }
}

TEST(MessageQueue, ClassMasksTellPaintsInputAndPostsApart)
{
    WindowOptions options;
    options.style = WS_POPUP | WS_VISIBLE;
    options.handler = JustValidate;
    TestWindow window(options);
    PumpMessages();
    InvalidateRect(window, nullptr, FALSE);
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, window, 0, 0, PM_NOREMOVE | PM_QS_POSTMESSAGE));
    EXPECT_FALSE(PeekMessageW(&message, window, 0, 0, PM_NOREMOVE | PM_QS_INPUT));
    ASSERT_TRUE(PeekMessageW(&message, window, 0, 0, PM_NOREMOVE | PM_QS_PAINT));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_PAINT));
    ValidateRect(window, nullptr);
    PostQuitMessage(0);
    EXPECT_FALSE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_PAINT));
    EXPECT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_POSTMESSAGE));
}

TEST(MessageQueue, AFilterHoldsPaintsOfOtherWindowsBack)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine finds no paint of the window asked for";
    WindowOptions options;
    options.style = WS_POPUP | WS_VISIBLE;
    options.handler = JustValidate;
    TestWindow first(options);
    options.rect = { 150, 0, 100, 100 };
    TestWindow second(options);
    PumpMessages();
    InvalidateRect(first, nullptr, FALSE);
    InvalidateRect(second, nullptr, FALSE);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, first, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.hwnd, static_cast<HWND>(first));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_PAINT));
    EXPECT_FALSE(PeekMessageW(&message, first, WM_USER, WM_USER + 9, PM_REMOVE));
}

TEST(MessageQueue, ATimerNeedsALivingWindow)
{
    HWND dead = nullptr;
    {
        TestWindow window;
        dead = window;
    }
    EXPECT_EQ(SetTimer(dead, 1, 60000, nullptr), 0U);
    EXPECT_FALSE(KillTimer(dead, 1));
}

TEST(MessageQueue, ATimerNumberedZeroIsSetAndKilledAsAnyOther)
{
    TestWindow window;
    EXPECT_NE(SetTimer(window, 0, 60000, nullptr), 0U);
    EXPECT_TRUE(KillTimer(window, 0));
    EXPECT_FALSE(KillTimer(window, 0));
}

TEST(MessageQueue, TimersOfTheThreadHaveIdsOfTheirOwn)
{
    const UINT_PTR first = SetTimer(nullptr, 0, 60000, nullptr);
    const UINT_PTR second = SetTimer(nullptr, 0, 60000, nullptr);
    EXPECT_NE(first, 0U);
    EXPECT_NE(second, 0U);
    EXPECT_NE(first, second);
    EXPECT_TRUE(KillTimer(nullptr, first));
    EXPECT_TRUE(KillTimer(nullptr, second));
}

TEST(MessageQueue, TheSameIdIsAnotherTimerInAnotherWindow)
{
    TestWindow first;
    TestWindow second;
    SetTimer(first, 5, 60000, nullptr);
    SetTimer(second, 5, 60000, nullptr);
    EXPECT_TRUE(KillTimer(first, 5));
    EXPECT_FALSE(KillTimer(first, 5));
    EXPECT_TRUE(KillTimer(second, 5));
}

TEST(MessageQueue, TenThousandPostsWaitAndNoMore)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine keeps more";
    constexpr int kMost = 10000;
    TestWindow window;
    PumpMessages();
    for (int i = 0; i < kMost; ++i)
        ASSERT_EQ(PostMessageW(window, WM_USER, 0, 0), TRUE) << i;
    EXPECT_EQ(PostMessageW(window, WM_USER, 0, 0), FALSE);
    EXPECT_EQ(PostMessageW(nullptr, WM_USER, 0, 0), FALSE);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, window, WM_USER, WM_USER, PM_REMOVE));
    EXPECT_EQ(PostMessageW(window, WM_USER, 0, 0), TRUE) << "there is room again";
    PumpMessages();
    EXPECT_EQ(window.Count(WM_USER), kMost);
}

TEST(MessageQueue, APostToADeadWindowFails)
{
    HWND dead = nullptr;
    {
        TestWindow window;
        dead = window;
    }
    SetLastError(0);
    EXPECT_EQ(PostMessageW(dead, WM_USER, 0, 0), FALSE);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE));
    EXPECT_EQ(SendMessageW(dead, WM_USER, 0, 0), 0);
}

TEST(MessageQueue, NoFilterHoldsQuitBack)
{
    TestWindow window;
    PumpMessages();
    PostQuitMessage(4);
    MSG message{};
    EXPECT_EQ(GetMessageW(&message, nullptr, WM_USER, WM_USER), FALSE);
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(message.wParam, 4U);
}

TEST(MessageQueue, AMaskForSentMessagesFindsNothingToHandOut)
{
    WindowOptions options;
    options.style = WS_POPUP | WS_VISIBLE;
    options.handler = JustValidate;
    TestWindow window(options);
    PumpMessages();
    InvalidateRect(window, nullptr, FALSE);
    PostMessageW(window, WM_USER, 0, 0);
    PostQuitMessage(0);
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_SENDMESSAGE));
    EXPECT_EQ(Take(window).message, static_cast<UINT>(WM_USER));
    EXPECT_EQ(Take().message, static_cast<UINT>(WM_QUIT));
}

TEST(MessageQueue, AProcedureThatIsNoneAnswersNothing)
{
    EXPECT_EQ(CallWindowProcW(nullptr, nullptr, WM_USER, 1, 2), 0);
}

TEST(MessageQueue, AKeyThatIsNoneIsUp)
{
    EXPECT_EQ(GetKeyState(-1), 0);
    EXPECT_EQ(GetKeyState(256), 0);
    EXPECT_EQ(GetKeyState(0x7FFFFFFF), 0);
}

TEST(MessageQueue, QuitWaitsForPostedMessagesThatTheFilterLeaves)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine hands it out before them";
    TestWindow window;
    PumpMessages();
    PostMessageW(window, WM_USER, 0, 0);
    PostQuitMessage(1);
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_USER + 5, WM_USER + 6, PM_REMOVE));
    EXPECT_EQ(Take().message, static_cast<UINT>(WM_USER));
    EXPECT_EQ(Take().message, static_cast<UINT>(WM_QUIT));
}

} // namespace
