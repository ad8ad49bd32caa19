// Windows and messages across threads. Waits for events only, never for time.
#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <thread>

namespace {

constexpr UINT kAsk = WM_USER + 1;
constexpr UINT kAskBack = WM_USER + 2;
constexpr UINT kStop = WM_USER + 3;

// A thread with one window and a loop of its own until it is told kStop.
class WindowThread {
public:
    explicit WindowThread(MessageHandler handler)
    {
        std::promise<HWND> made;
        auto window = made.get_future();
        m_thread = std::thread([&made, handler = std::move(handler)] {
            WindowOptions options;
            options.handler = handler;
            TestWindow own(options);
            made.set_value(own);
            MSG message{};
            while (GetMessageW(&message, nullptr, 0, 0) > 0 && message.message != kStop)
                DispatchMessageW(&message);
        });
        m_window = window.get();
    }
    ~WindowThread()
    {
        PostMessageW(m_window, kStop, 0, 0);
        // The thread may still want something of this one's windows.
        while (IsWindow(m_window))
            PumpMessages();
        m_thread.join();
    }
    WindowThread(const WindowThread&) = delete;
    WindowThread& operator=(const WindowThread&) = delete;
    HWND Window() const { return m_window; }

private:
    HWND m_window = nullptr;
    std::thread m_thread;
};

TEST(Threads, AMessageSentToAnotherThreadIsAnsweredThere)
{
    std::atomic<DWORD> answeredBy{ 0 };
    WindowThread other([&](HWND, UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
        if (message != kAsk)
            return std::nullopt;
        answeredBy = GetCurrentThreadId();
        return static_cast<LRESULT>(wParam) * 2;
    });
    EXPECT_EQ(SendMessageW(other.Window(), kAsk, 21, 0), 42);
    EXPECT_EQ(answeredBy.load(), GetWindowThreadProcessId(other.Window(), nullptr));
    EXPECT_NE(answeredBy.load(), GetCurrentThreadId());
}

TEST(Threads, AWaitingSenderServesMessagesSentToIt)
{
    WindowOptions options;
    options.handler = [](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == kAskBack)
            return 7;
        return std::nullopt;
    };
    TestWindow mine(options);
    const HWND asker = mine;
    WindowThread other([asker](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == kAsk)
            return SendMessageW(asker, kAskBack, 0, 0) + 1;
        return std::nullopt;
    });
    EXPECT_EQ(SendMessageW(other.Window(), kAsk, 0, 0), 8);
    EXPECT_EQ(mine.Count(kAskBack), 1);
}

TEST(Threads, AnotherThreadsWindowCannotBeDestroyed)
{
    WindowThread other([](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> { return std::nullopt; });
    EXPECT_FALSE(DestroyWindow(other.Window()));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
    EXPECT_TRUE(IsWindow(other.Window()));
}

TEST(Threads, FocusOfAnotherThreadsWindowCannotBeSet)
{
    WindowThread other([](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> { return std::nullopt; });
    EXPECT_EQ(SetFocus(other.Window()), nullptr);
    EXPECT_NE(GetFocus(), other.Window());
}

TEST(Threads, AThreadsWindowsEndWithIt)
{
    HWND window = nullptr;
    std::thread thread([&window] {
        window = CreateWindowExW(0, TEXT("static"), nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    });
    thread.join();
    EXPECT_NE(window, nullptr);
    EXPECT_FALSE(IsWindow(window));
}

TEST(Threads, PostsFromManyThreadsAllArrive)
{
    TestWindow window;
    PumpMessages();
    const HWND target = window;
    std::vector<std::thread> posters;
    for (int i = 0; i < 4; ++i)
        posters.emplace_back([target] {
            for (int n = 0; n < 200; ++n)
                PostMessageW(target, kAsk, 0, 0);
        });
    MSG message{};
    for (int received = 0; received < 800; ++received) {
        ASSERT_GT(GetMessageW(&message, target, kAsk, kAsk), 0);
        DispatchMessageW(&message);
    }
    for (auto& poster : posters)
        poster.join();
    EXPECT_EQ(window.Count(kAsk), 800);
}

// Fact: with a class mask the messages sent from elsewhere are served first, and the call then finds nothing.
TEST(Threads, AMaskedPeekThatServedASentMessageReturnsFalse)
{
    TestWindow window;
    PumpMessages();
    const HWND target = window;
    PostMessageW(window, WM_USER + 8, 0, 0);
    std::atomic<bool> answered{ false };
    std::thread sender([&] {
        SendMessageW(target, kAsk, 0, 0);
        answered = true;
    });
    MSG message{};
    while (window.Count(kAsk) == 0) {
        // Only sent messages are looked for, so the posted one stays until the sent one was served.
        const BOOL found = PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_POSTMESSAGE);
        EXPECT_EQ(found, window.Count(kAsk) == 0 ? TRUE : FALSE);
    }
    sender.join();
    EXPECT_TRUE(answered);
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_USER + 8, WM_USER + 8, PM_REMOVE));
}

// Fact: another thread of the process may set and kill a window's timer.
TEST(Threads, AnotherThreadMaySetAndKillAWindowsTimer)
{
    TestWindow window;
    const HWND target = window;
    UINT_PTR id = 0;
    std::thread([&] { id = SetTimer(target, 5, 60000, nullptr); }).join();
    EXPECT_NE(id, 0U);
    BOOL killed = FALSE;
    std::thread([&] { killed = KillTimer(target, 5); }).join();
    EXPECT_TRUE(killed);
    EXPECT_FALSE(KillTimer(target, 5));
}

TEST(Threads, AThreadThatEndsAnswersItsSendersWithZero)
{
    std::promise<HWND> made;
    auto window = made.get_future();
    std::promise<void> leave;
    std::thread thread([&] {
        made.set_value(
            CreateWindowExW(0, TEXT("static"), nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr));
        leave.get_future().wait();
    });
    const HWND target = window.get();
    std::thread sender([&] { EXPECT_EQ(SendMessageW(target, kAsk, 0, 0), 0); });
    leave.set_value();
    thread.join();
    sender.join();
    EXPECT_FALSE(IsWindow(target));
}

// Fact: WM_PAINT is no posted message, yet it wakes a thread that waits for one.
TEST(Threads, AWindowThatAnotherThreadInvalidatesIsPaintedByItsOwn)
{
    std::promise<void> painted;
    std::atomic<bool> isWanted{ false };
    WindowThread other([&](HWND window, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message != WM_PAINT)
            return std::nullopt;
        ValidateRect(window, nullptr);
        if (isWanted.exchange(false))
            painted.set_value();
        return 0;
    });
    ShowWindow(other.Window(), SW_SHOWNA);
    for (int i = 0; i < 20; ++i) {
        painted = std::promise<void>();
        auto isPainted = painted.get_future();
        SendMessageW(other.Window(), kAsk, 0, 0); // then it is back at its wait, or about to be
        isWanted = true;
        InvalidateRect(other.Window(), nullptr, FALSE);
        ASSERT_EQ(isPainted.wait_for(std::chrono::seconds(10)), std::future_status::ready) << i;
    }
}

TEST(Threads, AMessageIsDispatchedByTheThreadOfItsWindowOnly)
{
    std::atomic<int> calls{ 0 };
    WindowThread other([&](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message != kAsk)
            return std::nullopt;
        ++calls;
        return 5;
    });
    MSG message{};
    message.hwnd = other.Window();
    message.message = kAsk;
    EXPECT_EQ(DispatchMessageW(&message), 0);
    EXPECT_EQ(calls, 0);
}

// The end of the other thread is seen by a third one only if its message waited there.
TEST(Threads, AMessageThatWaitsAtAThreadThatEndsIsAnsweredWithZero)
{
    std::promise<HWND> made;
    auto window = made.get_future();
    std::promise<void> leave;
    std::thread thread([&] {
        made.set_value(
            CreateWindowExW(0, TEXT("static"), nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr));
        leave.get_future().wait();
    });
    const HWND target = window.get();
    // This thread's window is asked while it waits for an answer itself: by then its own message waits at the other.
    TestWindow mine;
    mine.Handle([&](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == kAskBack)
            leave.set_value();
        return std::nullopt;
    });
    const HWND asked = mine;
    std::thread asker([asked] { SendMessageW(asked, kAskBack, 0, 0); });
    EXPECT_EQ(SendMessageW(target, kAsk, 0, 0), 0);
    thread.join();
    asker.join();
    EXPECT_FALSE(IsWindow(target));
}

} // namespace
