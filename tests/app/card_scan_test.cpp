// A scan of a card that takes its time.
#include "app/card_scan.h"

#include "app/title_ticker.h"
#include "playback/media_graph.h"
#include "tests/app/alerts_user.h"
#include "tests/app/list_windows_fixture.h"

#include <functional>

using namespace cardsong::test;

namespace {

// Time passes as the program works: once it is slow, each time that its thread asks the clock costs a millisecond.
class ClockOfASlowCard final : public cardsong::kernel::Clock {
public:
    explicit ClockOfASlowCard(cardsong::kernel::Clock& inner) : m_inner(inner) {}

    std::uint64_t NowMs() const override
    {
        if (isSlow && std::this_thread::get_id() == m_thread)
            ++m_spentMs;
        return m_inner.NowMs() + m_spentMs;
    }
    bool WaitUntil(std::unique_lock<std::mutex>& lock, std::condition_variable& condition, std::uint64_t deadlineMs,
                   const std::function<bool()>& ready) override
    {
        const std::uint64_t spentMs = m_spentMs;
        const std::uint64_t innerMs = deadlineMs > spentMs ? deadlineMs - spentMs : 0;
        return m_inner.WaitUntil(lock, condition, deadlineMs == cardsong::kernel::kNever ? deadlineMs : innerMs, ready);
    }

    bool isSlow = false;

private:
    cardsong::kernel::Clock& m_inner;
    const std::thread::id m_thread = std::this_thread::get_id();
    mutable std::atomic<std::uint64_t> m_spentMs = 0;
};

constexpr UINT kWatchPeriodMs = 10;
// Called by a timer, in the midst of the scan.
std::function<void()> g_watch;

class CardScan : public ListWindowsTest {
protected:
    void SetUp() override
    {
        PlayerTest::SetUp();
        cardsong::kernel::InstallClock(&m_slowClock);
        Start();
        m_threads = WindowThreads();
    }
    void TearDown() override
    {
        g_watch = nullptr;
        PlayerTest::TearDown();
        while (WindowThreads() > m_threads)
            std::this_thread::yield(); // the thread of a processing box uses the clock
    }

    void PutManyOnCard(int count)
    {
        for (int i = 0; i < count; ++i)
            m_device.WriteFile("card/" + std::to_string(1000 + i) + ".mp3", "x");
    }
    // Asks for the command while `watch` looks on every ten milliseconds.
    void SendSlowly(WORD command, std::function<void()> watch)
    {
        g_watch = std::move(watch);
        const UINT_PTR timer = SetTimer(nullptr, 0, kWatchPeriodMs, [](HWND, UINT, UINT_PTR, DWORD) { g_watch(); });
        m_slowClock.isSlow = true;
        SendMessageW(m_window, WM_COMMAND, command, 0);
        m_slowClock.isSlow = false;
        KillTimer(nullptr, timer);
    }
    static HWND Box() { return FindWindowW(kAlertClass, nullptr); }

    int m_threads = 0;
    ClockOfASlowCard m_slowClock{ m_clock };
};

} // namespace

TEST_F(CardScan, OfASmallCardShowsNoBox)
{
    AddSongs({ "m.mp3" });
    PutManyOnCard(100);
    int watched = 0;
    SendSlowly(25, [&watched] {
        ++watched;
        EXPECT_EQ(Box(), nullptr);
    });
    EXPECT_GT(watched, 0);
    EXPECT_EQ(CardSongList.GetCount(), 100);
    EXPECT_NE(LibraryWindow(), nullptr);
}

TEST_F(CardScan, ShowsTheBoxOnceItHasTakenThreeHundredMillisecondsAndTheListAfterIt)
{
    AddSongs({ "m.mp3" });
    OpenPlayList();
    PutManyOnCard(800);
    const DWORD startMs = GetTickCount();
    int before = 0;
    int after = 0;
    SendSlowly(25, [&] {
        const DWORD takenMs = GetTickCount() - startMs;
        if (takenMs < 300) {
            ++before;
            EXPECT_EQ(Box(), nullptr) << takenMs;
        } else if (takenMs > 310) {
            ++after;
            EXPECT_NE(Box(), nullptr) << takenMs;
            EXPECT_FALSE(IsWindowEnabled(PlayListWindow()));
        }
        EXPECT_EQ(LibraryWindow(), nullptr);
    });
    EXPECT_GT(before, 1);
    EXPECT_GT(after, 1);
    EXPECT_EQ(Box(), nullptr);
    EXPECT_TRUE(IsWindowEnabled(PlayListWindow()));
    EXPECT_EQ(GetForegroundWindow(), LibraryWindow());
    EXPECT_EQ(CardSongList.GetCount(), 800);
    Pump();
    Tap(kCheckAllKey);
    Tap(kDoneKey);
    EXPECT_EQ(PlayList.GetCount(), 801);
}

TEST_F(CardScan, TheBoxIsSeenAndIsGoneAfterwards)
{
    PutManyOnCard(800);
    const Frame player = Screen();
    constexpr RECT box{ 177, 73, 302, 198 };
    int seen = 0;
    SendSlowly(24, [&] {
        if (Box() != nullptr)
            seen = std::max(seen, Differences(player, Screen(), box));
    });
    EXPECT_GT(seen, 200);
    Pump();
    EXPECT_EQ(PlayList.GetCount(), 800);
    EXPECT_EQ(Screen(), PlayListOpenedAnew());
}

TEST_F(CardScan, FillsAnEmptyListForThePlayKeyInTheSameWay)
{
    g_launchOptions.fillFromCard = true;
    PutManyOnCard(800);
    bool hasBox = false;
    SendSlowly(kCommandPlay, [&] { hasBox = hasBox || Box() != nullptr; });
    EXPECT_TRUE(hasBox);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_EQ(Narrow(g_titleText), "01.1000");
}

TEST_F(CardScan, TheTimeOfTheSongThatPlaysGoesOn)
{
    AddSongs({ "m.mp3" });
    Press(VK_RETURN);
    Advance(10);
    PutManyOnCard(1500);
    std::vector<std::string> times;
    SendSlowly(25, [&] {
        if (times.empty() || times.back() != Narrow(g_elapsedText))
            times.push_back(Narrow(g_elapsedText));
    });
    EXPECT_EQ(times, (std::vector<std::string>{ "0:01", "0:02" }));
    EXPECT_EQ(g_isPlaying, 1);
}

TEST_F(CardScan, CommandsAndNoticesThatArriveMeanwhileWaitForItsEnd)
{
    AddSongs({ "m.mp3", "n.mp3" });
    Notify(50, 1);
    PutManyOnCard(600);
    bool areSent = false;
    SendSlowly(31, [&] {
        if (!std::exchange(areSent, true)) {
            for (const WPARAM command : { 33, 28, 24 })
                SendMessageW(m_window, WM_COMMAND, command, 0);
            SendMessageW(m_window, WM_NOTIFY, 50, 0);
            SendMessageW(m_window, g_msgUserAddSongs, 0, 0);
        }
        EXPECT_GE(PlayList.GetCount(), 2);
        EXPECT_EQ(Narrow(SongList(PlayList).At(1).fileName), "n.mp3");
        EXPECT_EQ(PlayListWindow(), nullptr);
    });
    ASSERT_TRUE(areSent);
    EXPECT_EQ(PlayList.GetCount(), 602); // none of them was obeyed
    EXPECT_EQ(Marks()[1], 2);
    Pump(); // 33 and 28, then 24, which takes the card in again
    EXPECT_EQ(PlayList.GetCount(), 602);
    EXPECT_NE(PlayListWindow(), nullptr);
    EXPECT_EQ(Marks()[0], 1); // the notice came last
}

TEST_F(CardScan, TheEndOfTheSongThatComesMeanwhileIsTakenAfterIt)
{
    AddSongs({ "m.mp3" });
    Press(VK_RETURN);
    PutManyOnCard(600);
    bool hasEnded = false;
    SendSlowly(31, [&] {
        if (!std::exchange(hasEnded, true)) {
            FinishCurrentSong();
            SendMessageW(m_window, kGraphEventMessage, 0, 0);
        }
        EXPECT_EQ(g_isPlaying, 1);
    });
    ASSERT_TRUE(hasEnded);
    EXPECT_EQ(PlayList.GetCount(), 601);
    Pump();
    EXPECT_EQ(g_isPlaying, 0);
    EXPECT_EQ(g_songLoaded, 0);
}

TEST_F(CardScan, ThePlayerThatIsAskedToEndMeanwhileEndsAfterIt)
{
    AddSongs({ "m.mp3" });
    PutManyOnCard(600);
    bool isAsked = false;
    SendSlowly(25, [&] {
        if (!std::exchange(isAsked, true))
            SendMessageW(m_window, WM_CLOSE, 0, 0);
        EXPECT_TRUE(IsWindow(m_window));
    });
    EXPECT_TRUE(isAsked);
    EXPECT_EQ(CardSongList.GetCount(), 600);
    Pump();
    EXPECT_TRUE(m_hasQuit);
    EXPECT_FALSE(IsWindow(m_window));
}

TEST_F(CardScan, OfACardThatIsPulledEndsWithWhatItFoundAndCostsNoSong)
{
    AddSongs({ "m.mp3", "n.mp3" });
    PutManyOnCard(600);
    const std::filesystem::path card = m_device.CardDirectory();
    int found = 0;
    SendSlowly(31, [&] {
        if (!std::filesystem::exists(card))
            return;
        found = PlayList.GetCount();
        if (found >= 200)
            std::filesystem::rename(card, card.string() + ".away");
    });
    EXPECT_FALSE(std::filesystem::exists(card));
    EXPECT_EQ(PlayList.GetCount(), found + 1); // the one whose turn it was
    EXPECT_LT(found, 600);
    EXPECT_EQ(Box(), nullptr);
    Pump();
    Send(24);
    EXPECT_EQ(LabelsOf(PlayListRows())[1], "2 n.mp3");
    EXPECT_EQ(static_cast<int>(PlayListRows().size()), found + 1);
}

TEST_F(CardScan, TheMessageToQuitIsLeftToTheMainLoop)
{
    AddSongs({ "m.mp3" });
    PutManyOnCard(200);
    PostQuitMessage(3);
    SendSlowly(25, [] {});
    EXPECT_EQ(CardSongList.GetCount(), 200);
    EXPECT_FALSE(m_hasQuit);
    Pump();
    EXPECT_TRUE(m_hasQuit);
}
