// Timers on the virtual clock.
#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/input.h"
#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

#include <ctime>
#include <thread>

using namespace cardsong;

namespace {

class TimerTest : public testing::Test {
protected:
    TimerTest()
    {
        user::ResetWindows();
        kernel::InstallClock(&m_clock);
        m_window = std::make_unique<TestWindow>();
    }
    ~TimerTest() override
    {
        m_window.reset();
        user::ResetWindows();
        kernel::InstallClock(nullptr);
    }

    int Ticks() const { return m_window->Count(WM_TIMER); }
    void Advance(std::uint64_t milliseconds)
    {
        m_clock.Advance(milliseconds);
        PumpMessages();
    }

    kernel::VirtualClock m_clock;
    std::unique_ptr<TestWindow> m_window;
};

TEST_F(TimerTest, TicksComeWhenTheyAreDueWithTheirId)
{
    SetTimer(*m_window, 1000, 100, nullptr);
    Advance(99);
    EXPECT_EQ(Ticks(), 0);
    Advance(1);
    ASSERT_EQ(Ticks(), 1);
    EXPECT_EQ(m_window->Last(WM_TIMER)->wParam, 1000U);
    Advance(100);
    EXPECT_EQ(Ticks(), 2);
}

TEST_F(TimerTest, TicksThatNobodyRetrievesAreLostAndTheRhythmIsKept)
{
    SetTimer(*m_window, 1, 100, nullptr);
    Advance(350);
    EXPECT_EQ(Ticks(), 1);
    Advance(49);
    EXPECT_EQ(Ticks(), 1);
    Advance(1);
    EXPECT_EQ(Ticks(), 2);
}

TEST_F(TimerTest, APeriodOfZeroIsTenMilliseconds)
{
    SetTimer(*m_window, 1, 0, nullptr);
    PumpMessages();
    EXPECT_EQ(Ticks(), 0);
    for (int i = 0; i < 1000; ++i)
        Advance(1);
    EXPECT_EQ(Ticks(), 100);
}

TEST_F(TimerTest, SettingTheSameIdAgainReplacesTheTimer)
{
    SetTimer(*m_window, 1, 100, nullptr);
    Advance(90);
    SetTimer(*m_window, 1, 200, nullptr);
    Advance(199);
    EXPECT_EQ(Ticks(), 0);
    Advance(1);
    EXPECT_EQ(Ticks(), 1);
}

TEST_F(TimerTest, TheIdsOfThreadTimersCountDown)
{
    EXPECT_EQ(SetTimer(nullptr, 0, 100, nullptr), 0x7FFFU);
    EXPECT_EQ(SetTimer(nullptr, 0, 100, nullptr), 0x7FFEU);
    KillTimer(nullptr, 0x7FFF);
    KillTimer(nullptr, 0x7FFE);
}

TEST_F(TimerTest, AThreadTimerSetAgainUnderItsIdIsReplaced)
{
    const UINT_PTR id = SetTimer(nullptr, 0, 100, nullptr);
    EXPECT_EQ(SetTimer(nullptr, id, 300, nullptr), id);
    MSG message{};
    m_clock.Advance(299);
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE));
    m_clock.Advance(1);
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE));
    EXPECT_EQ(message.hwnd, nullptr);
    EXPECT_EQ(message.wParam, id);
    KillTimer(nullptr, id);
}

TEST_F(TimerTest, ATickComesAfterPostedMessages)
{
    SetTimer(*m_window, 1, 100, nullptr);
    m_clock.Advance(100);
    PostMessageW(*m_window, WM_USER, 0, 0);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, WM_USER);
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, WM_TIMER);
}

TEST_F(TimerTest, ATickThatWasLookedAtComesBeforeMessagesPostedLater)
{
    SetTimer(*m_window, 1, 100, nullptr);
    m_clock.Advance(100);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE));
    EXPECT_EQ(message.message, WM_TIMER);
    PostMessageW(*m_window, WM_USER, 0, 0);
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, WM_TIMER);
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, WM_USER);
    EXPECT_FALSE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
}

TEST_F(TimerTest, AKilledTimerTicksNoMore)
{
    SetTimer(*m_window, 1, 100, nullptr);
    KillTimer(*m_window, 1);
    Advance(500);
    EXPECT_EQ(Ticks(), 0);
}

TEST_F(TimerTest, ADestroyedWindowsTimersAreGone)
{
    SetTimer(*m_window, 1, 100, nullptr);
    DestroyWindow(*m_window);
    m_clock.Advance(500);
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE));
}

UINT_PTR g_calledWith = 0;

void CALLBACK RememberCall(HWND, UINT, UINT_PTR id, DWORD)
{
    g_calledWith = id;
}

TEST_F(TimerTest, ATimerWithAProcedureCallsItInsteadOfTheWindow)
{
    SetTimer(*m_window, 31, 100, RememberCall);
    Advance(100);
    EXPECT_EQ(g_calledWith, 31U);
    EXPECT_EQ(Ticks(), 0);
}

TEST_F(TimerTest, TwoTimersThatAreDueComeInTheOrderOfTheirTime)
{
    SetTimer(*m_window, 1, 200, nullptr);
    SetTimer(*m_window, 2, 100, nullptr);
    Advance(200);
    std::vector<WPARAM> ids;
    for (const auto& seen : m_window->Seen())
        if (seen.message == WM_TIMER)
            ids.push_back(seen.wParam);
    EXPECT_EQ(ids, (std::vector<WPARAM>{ 2, 1 }));
}

TEST_F(TimerTest, TicksThatComeCloseTogetherWakeTheThreadOnce)
{
    SetTimer(*m_window, 1, 100, nullptr);
    SetTimer(*m_window, 2, 110, nullptr);
    const auto startMs = m_clock.NowMs();
    std::thread driver([this] {
        m_clock.Advance(109);
        m_clock.Advance(1);
    });
    MSG message{};
    EXPECT_EQ(GetMessageW(&message, nullptr, WM_TIMER, WM_TIMER), TRUE);
    EXPECT_EQ(message.wParam, 1U);
    EXPECT_EQ(m_clock.NowMs() - startMs, 110U);
    EXPECT_EQ(PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE), TRUE);
    EXPECT_EQ(message.wParam, 2U);
    driver.join();
}

TEST_F(TimerTest, AThreadThatWaitsInGetMessageWakesForItsTimer)
{
    SetTimer(*m_window, 1, 5000, nullptr);
    std::thread driver([this] { m_clock.Advance(5000); });
    MSG message{};
    EXPECT_EQ(GetMessageW(&message, nullptr, WM_TIMER, WM_TIMER), TRUE);
    EXPECT_EQ(message.wParam, 1U);
    driver.join();
}

TEST_F(TimerTest, ATickIsTakenFromTheWindowThatWasAskedFor)
{
    TestWindow other;
    SetTimer(*m_window, 1, 100, nullptr);
    SetTimer(other, 2, 200, nullptr);
    m_clock.Advance(300);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, other, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.wParam, 2U);
    EXPECT_EQ(message.hwnd, static_cast<HWND>(other));
    EXPECT_FALSE(PeekMessageW(&message, other, 0, 0, PM_REMOVE));
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_USER, WM_USER + 9, PM_REMOVE));
    EXPECT_TRUE(PeekMessageW(&message, *m_window, 0, 0, PM_REMOVE));
}

TEST_F(TimerTest, AWaitForOneWindowIsNotEndedByTheTimerOfAnother)
{
    TestWindow other;
    SetTimer(*m_window, 1, 100, nullptr);
    SetTimer(other, 2, 300, nullptr);
    const auto startMs = m_clock.NowMs();
    std::thread driver([this] {
        m_clock.Advance(100);
        m_clock.Advance(200);
    });
    MSG message{};
    EXPECT_EQ(GetMessageW(&message, other, 0, 0), TRUE);
    EXPECT_EQ(message.wParam, 2U);
    EXPECT_EQ(m_clock.NowMs() - startMs, 300U);
    driver.join();
}

TEST_F(TimerTest, AnotherTickIsDueOnePeriodAfterTheLast)
{
    SetTimer(*m_window, 1, 30, nullptr);
    std::vector<std::uint64_t> at;
    const auto startMs = m_clock.NowMs();
    for (int i = 0; i < 100; ++i) {
        const int before = Ticks();
        Advance(1);
        if (Ticks() != before)
            at.push_back(m_clock.NowMs() - startMs);
    }
    EXPECT_EQ(at, (std::vector<std::uint64_t>{ 30, 60, 90 }));
}

TEST_F(TimerTest, ThePeriodIsTenMillisecondsAtLeast)
{
    SetTimer(*m_window, 1, 9, nullptr);
    SetTimer(*m_window, 2, 11, nullptr);
    Advance(10);
    ASSERT_EQ(Ticks(), 1);
    EXPECT_EQ(m_window->Last(WM_TIMER)->wParam, 1U);
    Advance(1);
    EXPECT_EQ(Ticks(), 2);
}

TEST_F(TimerTest, ThePeriodIsTwentyFourDaysAtMost)
{
    SetTimer(*m_window, 1, 0xFFFFFFFF, nullptr);
    Advance(0x7FFFFFFE);
    EXPECT_EQ(Ticks(), 0);
    Advance(1);
    EXPECT_EQ(Ticks(), 1);
}

TEST_F(TimerTest, SettingATimerAnswersWithItsIdAndOneForTheIdZero)
{
    EXPECT_EQ(SetTimer(*m_window, 31, 100, nullptr), 31U);
    EXPECT_EQ(SetTimer(*m_window, 0, 100, nullptr), 1U);
    Advance(100);
    EXPECT_EQ(Ticks(), 2);
}

HWND g_tickWindow = nullptr;
UINT g_tickMessage = 0;
DWORD g_tickTime = 0;

void CALLBACK RememberTick(HWND window, UINT message, UINT_PTR, DWORD time)
{
    g_tickWindow = window;
    g_tickMessage = message;
    g_tickTime = time;
}

TEST_F(TimerTest, AProcedureIsToldTheWindowTheMessageAndTheTime)
{
    SetTimer(*m_window, 31, 100, RememberTick);
    Advance(100);
    EXPECT_EQ(g_tickWindow, static_cast<HWND>(*m_window));
    EXPECT_EQ(g_tickMessage, WM_TIMER);
    EXPECT_EQ(g_tickTime, GetTickCount());
}

TEST_F(TimerTest, SettingATimerAgainReplacesItsProcedure)
{
    SetTimer(*m_window, 1, 100, RememberTick);
    SetTimer(*m_window, 1, 100, nullptr);
    Advance(100);
    EXPECT_EQ(Ticks(), 1);
    EXPECT_EQ(m_window->Last(WM_TIMER)->lParam, 0);
}

TEST_F(TimerTest, KillingWhatIsNoTimerIsAnError)
{
    SetLastError(0);
    EXPECT_FALSE(KillTimer(*m_window, 77));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    SetTimer(*m_window, 77, 100, nullptr);
    SetLastError(0);
    EXPECT_TRUE(KillTimer(*m_window, 77));
    EXPECT_EQ(GetLastError(), 0U);
}

TEST_F(TimerTest, TimersThatAreMoreThanTenMillisecondsApartWakeTheThreadEach)
{
    SetTimer(*m_window, 1, 100, nullptr);
    SetTimer(*m_window, 2, 111, nullptr);
    const auto startMs = m_clock.NowMs();
    std::thread driver([this] { m_clock.Advance(100); });
    MSG message{};
    EXPECT_EQ(GetMessageW(&message, nullptr, WM_TIMER, WM_TIMER), TRUE);
    EXPECT_EQ(message.wParam, 1U);
    EXPECT_EQ(m_clock.NowMs() - startMs, 100U);
    driver.join();
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE));
}

TEST_F(TimerTest, AWaitForOtherMessagesIsNotEndedByATimer)
{
    SetTimer(*m_window, 1, 100, nullptr);
    m_clock.Advance(500);
    const HWND window = *m_window;
    std::thread poster([window] { PostMessageW(window, WM_USER, 0, 0); });
    MSG message{};
    EXPECT_EQ(GetMessageW(&message, nullptr, WM_USER, WM_USER), TRUE);
    EXPECT_EQ(message.message, WM_USER);
    poster.join();
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE));
}

// A thread that waits for a timer takes no processor time meanwhile.
TEST(TimersOnTheRealClock, AreWaitedForAtRest)
{
    TestWindow window;
    PumpMessages();
    const auto usedMs = [] {
        timespec used = {};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
        return used.tv_sec * 1000 + used.tv_nsec / 1'000'000;
    };
    SetTimer(window, 1, 400, nullptr);
    const auto before = usedMs();
    MSG message = {};
    ASSERT_TRUE(GetMessageW(&message, nullptr, 0, 0));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_TIMER));
    EXPECT_LT(usedMs() - before, 20);
}

// Keeps until when its waiters wait and whether news woke them. Nobody else runs meanwhile: `news` is what happens to a
// wait without end; any other passes its time.
class AskedClock final : public kernel::Clock {
public:
    std::uint64_t NowMs() const override { return m_nowMs; }
    bool WaitUntil(std::unique_lock<std::mutex>& lock, std::condition_variable&, std::uint64_t deadlineMs,
                   const std::function<bool()>& ready) override
    {
        if (ready())
            return true;
        deadlines.push_back(deadlineMs);
        if (deadlineMs != kernel::kNever)
            m_nowMs = std::max(m_nowMs, deadlineMs);
        if (deadlineMs == kernel::kNever || deadlines.size() > 9) {
            lock.unlock();
            m_news();
            lock.lock();
        }
        wasWoken.push_back(ready());
        return wasWoken.back();
    }
    void Restart(std::function<void()> news)
    {
        m_news = std::move(news);
        deadlines.clear();
        wasWoken.clear();
    }

    std::vector<std::uint64_t> deadlines;
    std::vector<bool> wasWoken;

private:
    std::function<void()> m_news;
    std::uint64_t m_nowMs = 1000;
};

class AskedWait : public testing::Test {
protected:
    AskedWait()
    {
        user::ResetWindows();
        kernel::InstallClock(&m_clock);
        m_window = std::make_unique<TestWindow>();
        PumpMessages();
        m_clock.Restart([window = HWND{ *m_window }] { PostMessageW(window, WM_USER, 0, 0); });
    }
    ~AskedWait() override
    {
        m_window.reset();
        user::ResetWindows();
        kernel::InstallClock(nullptr);
    }

    AskedClock m_clock;
    std::unique_ptr<TestWindow> m_window;
};

TEST_F(AskedWait, ThatATimerMustNotEndIsOneWaitWithoutEnd)
{
    SetTimer(*m_window, 1, 100, nullptr);
    MSG message{};
    EXPECT_EQ(GetMessageW(&message, nullptr, WM_USER, WM_USER), TRUE);
    EXPECT_EQ(m_clock.deadlines, (std::vector<std::uint64_t>{ kernel::kNever }));
}

TEST_F(AskedWait, WithoutATimerIsOneWaitWithoutEnd)
{
    MSG message{};
    EXPECT_EQ(GetMessageW(&message, nullptr, 0, 0), TRUE);
    EXPECT_EQ(m_clock.deadlines, (std::vector<std::uint64_t>{ kernel::kNever }));
}

TEST_F(AskedWait, ForAWindowIsNotEndedByTheTimerOfAnother)
{
    TestWindow other;
    SetTimer(other, 1, 100, nullptr);
    MSG message{};
    EXPECT_EQ(GetMessageW(&message, *m_window, 0, 0), TRUE);
    EXPECT_EQ(message.message, WM_USER);
    EXPECT_EQ(m_clock.deadlines, (std::vector<std::uint64_t>{ kernel::kNever }));
}

TEST_F(AskedWait, ForATimerEndsWhenItIsDueThoughAnotherWindowsIsDueSoonAfter)
{
    TestWindow other;
    SetTimer(*m_window, 1, 100, nullptr);
    SetTimer(other, 2, 105, nullptr);
    const auto startMs = m_clock.NowMs();
    MSG message{};
    EXPECT_EQ(GetMessageW(&message, *m_window, 0, 0), TRUE);
    EXPECT_EQ(message.wParam, 1U);
    EXPECT_EQ(m_clock.deadlines, (std::vector<std::uint64_t>{ startMs + 100 }));
}

// Each of these is news to a thread that waits without end.
TEST_F(AskedWait, IsEndedByWhateverBringsAMessage)
{
    WindowOptions options;
    options.style = WS_POPUP | WS_VISIBLE;
    options.handler = JustValidate;
    TestWindow shown(options);
    const HWND window = shown;
    const std::pair<const char*, std::function<void()>> kNews[] = {
        { "a post to a window", [&] { PostMessageW(window, WM_USER, 0, 0); } },
        { "a post to the thread", [] { PostMessageW(nullptr, WM_USER, 0, 0); } },
        { "a part to paint", [&] { InvalidateRect(window, nullptr, FALSE); } },
        { "a timer", [&] { SetTimer(window, 1, 10, nullptr); } },
        { "a press",
          [] {
              user::PointerDown({ 5, 5 });
          } },
        { "a release",
          [] {
              user::PointerUp({ 5, 5 });
          } },
        { "a key", [] { user::KeyDown(static_cast<UINT>(VK_LEFT)); } },
        { "the word to quit", [] { PostQuitMessage(0); } },
    };
    for (const auto& [name, news] : kNews) {
        PumpMessages();
        m_clock.Restart(news);
        MSG message{};
        GetMessageW(&message, nullptr, 0, 0);
        ASSERT_FALSE(m_clock.wasWoken.empty()) << name;
        EXPECT_TRUE(m_clock.wasWoken.front()) << name;
        KillTimer(window, 1);
    }
}

TEST_F(AskedWait, IsNotBegunWhenTheWordToQuitComesWhileATapFindsItsWindow)
{
    WindowOptions options;
    options.style = WS_POPUP | WS_VISIBLE;
    options.handler = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_NCHITTEST) {
            PostQuitMessage(3);
            return HTNOWHERE;
        }
        return JustValidate(window, message, wParam, lParam);
    };
    TestWindow shown(options);
    PumpMessages();
    m_clock.Restart([] {});
    user::PointerMove({ 5, 5 });
    MSG message{};
    EXPECT_EQ(GetMessageW(&message, nullptr, 0, 0), FALSE);
    EXPECT_EQ(message.wParam, 3U);
    EXPECT_TRUE(m_clock.deadlines.empty());
}

TEST_F(TimerTest, TwoTimersThatAreDueAtOnceComeInTheOrderInWhichTheyWereSet)
{
    SetTimer(*m_window, 2, 100, nullptr);
    SetTimer(*m_window, 1, 100, nullptr);
    m_clock.Advance(100);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE));
    EXPECT_EQ(message.wParam, 2U);
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE));
    EXPECT_EQ(message.wParam, 1U);
}

TEST_F(TimerTest, AClassMaskForPaintsHoldsTicksBack)
{
    SetTimer(*m_window, 1, 100, nullptr);
    m_clock.Advance(100);
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_PAINT));
    EXPECT_FALSE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_INPUT));
    EXPECT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_POSTMESSAGE));
}

} // namespace
