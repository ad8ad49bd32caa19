// The facade above the simulated engine, on a clock that only the test moves.
#include "playback/media_player.h"
#include "playback/simulated_graph.h"

#include "platform/linux/kernel/clock.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Calls = std::vector<std::string>;

constexpr const WCHAR* kSong = TEXT("\\SDMMC\\song.mp3");
constexpr const WCHAR* kOther = TEXT("\\SDMMC\\other.mp3");
constexpr const WCHAR* kMissing = TEXT("\\SDMMC\\missing.mp3");
constexpr const WCHAR* kFolder = TEXT("\\SDMMC\\album.mp3");

const Calls kOpening = { "Init", "RenderFile \\SDMMC\\song.mp3", "SetVolume -784", "Pause", "SetPosition 0.0" };

int g_timerTicks = 0;
int g_graphNotices = 0;

LRESULT CALLBACK CountMessages(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_TIMER && wParam == kProgressTimerId)
        ++g_timerTicks;
    if (message == kGraphEventMessage && wParam == 0 && lParam == 0)
        ++g_graphNotices;
    return DefWindowProcW(window, message, wParam, lParam);
}

class MediaPlayerTest : public testing::Test {
protected:
    void SetUp() override
    {
        cardsong::kernel::InstallClock(&m_clock);
        m_device.WriteFile("card/song.mp3", "not looked into");
        m_device.WriteFile("card/other.mp3", "not looked into");
        m_device.MakeFolder("card/album.mp3");
        ResetSimulatedGraphs();
        SetSimulatedSong(kSong, { 12.0, true, true });
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = CountMessages;
        windowClass.lpszClassName = TEXT("PlayerOwner");
        RegisterClassW(&windowClass);
        m_window = CreateWindowExW(0, TEXT("PlayerOwner"), nullptr, WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr,
                                   nullptr);
        ASSERT_NE(m_window, nullptr);
        g_timerTicks = 0;
        g_graphNotices = 0;
    }

    void TearDown() override
    {
        DestroyWindow(m_window);
        UnregisterClassW(TEXT("PlayerOwner"), nullptr);
        cardsong::kernel::InstallClock(nullptr);
    }

    void ServeMessages()
    {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    }

    // Time passes as for a window that serves its messages: a step is a tenth of the timer's period.
    void Play(unsigned milliseconds)
    {
        for (unsigned passed = 0; passed < milliseconds; passed += 10) {
            m_clock.Advance(10);
            ServeMessages();
        }
    }

    cardsong::kernel::VirtualClock m_clock;
    cardsong::test::ScratchDevice m_device;
    HWND m_window = nullptr;
};

TEST_F(MediaPlayerTest, NewPlayerCuesItsSongAndIsStopped)
{
    MediaPlayer player(kSong, m_window);
    Calls expected = kOpening;
    expected.push_back("SetNotifyWindow on");
    EXPECT_EQ(TakeSimulatedCalls(), expected);
    EXPECT_EQ(player.GetState(), PLAYER_STOPPED);
    EXPECT_EQ(player.GetVolume(), -784);
    EXPECT_EQ(player.GetPosition(), 0.0);
    Play(500);
    EXPECT_EQ(g_timerTicks, 0);
}

TEST_F(MediaPlayerTest, NewPlayerWithoutPathIsClosed)
{
    MediaPlayer player(nullptr, m_window);
    EXPECT_EQ(TakeSimulatedCalls(), Calls{});
    EXPECT_EQ(player.Play(), PLAYER_ERR_NOT_OPEN);
    EXPECT_EQ(player.GetState(), PLAYER_STOPPED);
}

TEST_F(MediaPlayerTest, MissingFileGivesMinusEightAndNoGraph)
{
    MediaPlayer player(nullptr, m_window);
    EXPECT_EQ(player.OpenAndPlay(kMissing, m_window), -8);
    EXPECT_EQ(LiveSimulatedGraphs(), 0);
    EXPECT_EQ(player.GetState(), PLAYER_STOPPED);
}

TEST_F(MediaPlayerTest, FolderGivesMinusEight)
{
    MediaPlayer player(nullptr, m_window);
    EXPECT_EQ(player.OpenAndPlay(kFolder, m_window), -8);
    EXPECT_EQ(LiveSimulatedGraphs(), 0);
}

TEST_F(MediaPlayerTest, NullPathGivesMinusEight)
{
    MediaPlayer player(nullptr, m_window);
    EXPECT_EQ(player.OpenAndPlay(nullptr, m_window), -8);
}

TEST_F(MediaPlayerTest, MissingFileLeavesTheOpenSongPlaying)
{
    MediaPlayer player(nullptr, m_window);
    ASSERT_EQ(player.OpenAndPlay(kSong, m_window), 0);
    Play(2000);
    EXPECT_EQ(player.OpenAndPlay(kMissing, m_window), -8);
    EXPECT_EQ(player.GetState(), PLAYER_PLAYING);
    EXPECT_DOUBLE_EQ(player.GetPosition(), 2.0);
}

TEST_F(MediaPlayerTest, KnowsWhichFileItHasOpen)
{
    MediaPlayer player(kSong, m_window);
    EXPECT_TRUE(player.HasOpen(kSong));
    EXPECT_FALSE(player.HasOpen(kOther));
    EXPECT_EQ(player.OpenAndPlay(kOther, m_window), 0);
    EXPECT_TRUE(player.HasOpen(kOther));
    EXPECT_FALSE(player.HasOpen(kSong));
    player.Pause();
    player.Stop();
    EXPECT_TRUE(player.HasOpen(kOther));
    player.Close();
    EXPECT_FALSE(player.HasOpen(kOther));
}

TEST_F(MediaPlayerTest, HasNothingOpenWhenTheGraphCannotBeMade)
{
    MediaPlayer player(kSong, m_window);
    FailNextSimulatedInit();
    EXPECT_EQ(player.OpenAndPlay(kOther, m_window), PLAYER_ERR_OPEN);
    EXPECT_FALSE(player.HasOpen(kOther));
    EXPECT_FALSE(player.HasOpen(kSong));
}

TEST_F(MediaPlayerTest, GraphThatCannotBeMadeGivesMinusEight)
{
    MediaPlayer player(nullptr, m_window);
    FailNextSimulatedInit();
    EXPECT_EQ(player.OpenAndPlay(kSong, m_window), PLAYER_ERR_OPEN);
    EXPECT_EQ(LiveSimulatedGraphs(), 0);
    EXPECT_EQ(player.Play(), PLAYER_ERR_NOT_OPEN);
}

TEST_F(MediaPlayerTest, OpenAndPlayCuesNamesTheWindowAndRuns)
{
    MediaPlayer player(nullptr, m_window);
    ASSERT_EQ(player.OpenAndPlay(kSong, m_window), 0);
    Calls expected = kOpening;
    expected.push_back("SetNotifyWindow on");
    expected.push_back("Run");
    EXPECT_EQ(TakeSimulatedCalls(), expected);
    EXPECT_EQ(player.GetState(), PLAYER_PLAYING);
}

TEST_F(MediaPlayerTest, OpeningAnotherSongStopsAndReleasesTheFirst)
{
    MediaPlayer player(nullptr, m_window);
    ASSERT_EQ(player.OpenAndPlay(kSong, m_window), 0);
    TakeSimulatedCalls();
    ASSERT_EQ(player.OpenAndPlay(kOther, m_window), 0);
    const Calls calls = TakeSimulatedCalls();
    const Calls closing(calls.begin(), calls.begin() + 3);
    EXPECT_EQ(closing, (Calls{ "Stop", "SetNotifyWindow off", "ReleaseAll" }));
    EXPECT_EQ(LiveSimulatedGraphs(), 1);
}

TEST_F(MediaPlayerTest, PathLongerThanItsFieldIsCutAndNotFound)
{
    const WString longPath = TEXT("\\SDMMC\\") + WString(400, TEXT('a'));
    MediaPlayer player(longPath.c_str(), m_window);
    EXPECT_EQ(player.Open(), PLAYER_ERR_OPEN);
}

TEST_F(MediaPlayerTest, ProgressTimerTicksTenTimesASecondWhilePlaying)
{
    MediaPlayer player(nullptr, m_window);
    ASSERT_EQ(player.OpenAndPlay(kSong, m_window), 0);
    Play(1000);
    EXPECT_EQ(g_timerTicks, 10);
}

TEST_F(MediaPlayerTest, PauseRightAfterOpenAndPlayKeepsTheOneTimer)
{
    MediaPlayer player(nullptr, m_window);
    ASSERT_EQ(player.OpenAndPlay(kSong, m_window), 0);
    Play(60);
    ASSERT_EQ(player.Pause(), 0);
    Play(40);
    EXPECT_EQ(g_timerTicks, 1) << "a timer set anew would have begun its period again";
    Play(900);
    EXPECT_EQ(g_timerTicks, 10);
    EXPECT_EQ(player.GetState(), PLAYER_PAUSED);
}

TEST_F(MediaPlayerTest, PauseOfAStoppedSongStartsTheTimer)
{
    MediaPlayer player(kSong, m_window);
    ASSERT_EQ(player.Pause(), 0);
    Play(300);
    EXPECT_EQ(g_timerTicks, 3);
}

TEST_F(MediaPlayerTest, PauseHoldsThePositionAndPlayResumesThere)
{
    MediaPlayer player(nullptr, m_window);
    ASSERT_EQ(player.OpenAndPlay(kSong, m_window), 0);
    Play(3000);
    player.Pause();
    Play(5000);
    EXPECT_DOUBLE_EQ(player.GetPosition(), 3.0);
    player.Play();
    Play(1000);
    EXPECT_DOUBLE_EQ(player.GetPosition(), 4.0);
}

TEST_F(MediaPlayerTest, StopRewindsBeforeItStopsTheGraph)
{
    MediaPlayer player(nullptr, m_window);
    ASSERT_EQ(player.OpenAndPlay(kSong, m_window), 0);
    Play(3000);
    TakeSimulatedCalls();
    EXPECT_EQ(player.Stop(), 0);
    EXPECT_EQ(TakeSimulatedCalls(), (Calls{ "SetPosition 0.0", "Stop" }));
    EXPECT_EQ(player.GetState(), PLAYER_STOPPED);
    EXPECT_DOUBLE_EQ(player.GetPosition(), 0.0);
}

TEST_F(MediaPlayerTest, PlayAfterStopStartsFromTheBeginning)
{
    MediaPlayer player(nullptr, m_window);
    ASSERT_EQ(player.OpenAndPlay(kSong, m_window), 0);
    Play(3000);
    player.Stop();
    Play(1000);
    ASSERT_EQ(player.Play(), 0);
    Play(1000);
    EXPECT_DOUBLE_EQ(player.GetPosition(), 1.0);
}

TEST_F(MediaPlayerTest, StopKillsTheTimer)
{
    MediaPlayer player(nullptr, m_window);
    ASSERT_EQ(player.OpenAndPlay(kSong, m_window), 0);
    Play(500);
    player.Stop();
    Play(1000);
    EXPECT_EQ(g_timerTicks, 5);
}

TEST_F(MediaPlayerTest, CloseKeepsTheTimerAndTheState)
{
    MediaPlayer player(nullptr, m_window);
    ASSERT_EQ(player.OpenAndPlay(kSong, m_window), 0);
    player.Close();
    Play(500);
    EXPECT_EQ(g_timerTicks, 5);
    EXPECT_EQ(player.GetState(), PLAYER_PLAYING);
    EXPECT_EQ(LiveSimulatedGraphs(), 0);
}

TEST_F(MediaPlayerTest, StopOfAClosedPlayerSucceedsAndKeepsTimerAndState)
{
    MediaPlayer player(nullptr, m_window);
    ASSERT_EQ(player.OpenAndPlay(kSong, m_window), 0);
    player.Close();
    EXPECT_EQ(player.Stop(), 0);
    EXPECT_EQ(player.GetState(), PLAYER_PLAYING);
    Play(300);
    EXPECT_EQ(g_timerTicks, 3);
}

TEST_F(MediaPlayerTest, EveryCallOnAClosedPlayerIsHarmless)
{
    MediaPlayer player(nullptr, nullptr);
    EXPECT_EQ(player.Open(), -8);
    EXPECT_EQ(player.Play(), -18);
    EXPECT_EQ(player.Pause(), -18);
    EXPECT_EQ(player.Seek(3.0), -18);
    EXPECT_EQ(player.Stop(), 0);
    EXPECT_EQ(player.GetDuration(), 0.0);
    EXPECT_EQ(player.GetPosition(), 0.0);
    EXPECT_EQ(player.SetVolume(-100), 0);
    EXPECT_EQ(player.GetVolume(), 0);
    EXPECT_FALSE(player.SetRate(2.0));
    EXPECT_EQ(player.GetRate(), 0.0);
    EXPECT_EQ(player.CheckEndOfStream(), 0);
    player.Close();
}

TEST_F(MediaPlayerTest, DurationIsThatOfTheSong)
{
    MediaPlayer player(kSong, m_window);
    EXPECT_DOUBLE_EQ(player.GetDuration(), 12.0);
}

TEST_F(MediaPlayerTest, UnknownDurationIsOneSecond)
{
    SetSimulatedSong(kSong, { 12.0, false, true });
    MediaPlayer player(kSong, m_window);
    EXPECT_DOUBLE_EQ(player.GetDuration(), 1.0);
}

TEST_F(MediaPlayerTest, KnownDurationDoesNotOutliveAFailedQuery)
{
    MediaPlayer player(kSong, m_window);
    ASSERT_DOUBLE_EQ(player.GetDuration(), 12.0);
    SetSimulatedSong(kOther, { 12.0, false, true });
    ASSERT_EQ(player.OpenAndPlay(kOther, m_window), 0);
    EXPECT_DOUBLE_EQ(player.GetDuration(), 1.0);
}

TEST_F(MediaPlayerTest, SongInWhichNothingCanBePlayedOpensWithLengthZeroAndNoEnd)
{
    SetSimulatedSong(kSong, { 12.0, true, false });
    MediaPlayer player(nullptr, m_window);
    EXPECT_EQ(player.OpenAndPlay(kSong, m_window), 0);
    EXPECT_EQ(player.GetState(), PLAYER_PLAYING);
    Play(60000);
    EXPECT_EQ(player.GetDuration(), 0.0);
    EXPECT_EQ(player.GetPosition(), 0.0);
    EXPECT_EQ(g_graphNotices, 0);
    EXPECT_EQ(player.CheckEndOfStream(), 0);
}

TEST_F(MediaPlayerTest, AKnownDurationIsToldFromTheOneSecondThatStandsInForIt)
{
    SetSimulatedSong(kSong, { 1.0, true, true });
    SetSimulatedSong(kOther, { 12.0, false, true });
    MediaPlayer player(nullptr, m_window);
    EXPECT_FALSE(player.KnowsDuration());
    ASSERT_EQ(player.OpenAndPlay(kSong, m_window), 0);
    EXPECT_TRUE(player.KnowsDuration());
    ASSERT_EQ(player.OpenAndPlay(kOther, m_window), 0);
    EXPECT_FALSE(player.KnowsDuration());
    EXPECT_DOUBLE_EQ(player.GetDuration(), 1.0);
}

TEST_F(MediaPlayerTest, FileWithoutMusicHasAKnownDurationOfNothing)
{
    SetSimulatedSong(kSong, { 12.0, true, false });
    MediaPlayer player(kSong, m_window);
    EXPECT_TRUE(player.KnowsDuration());
    EXPECT_EQ(player.GetDuration(), 0.0);
}

TEST_F(MediaPlayerTest, SongThatThisMachineCannotPlayRunsThroughOneSecondToItsEnd)
{
    SetSimulatedSong(kSong, { 12.0, true, true, true });
    MediaPlayer player(nullptr, m_window);
    EXPECT_EQ(player.OpenAndPlay(kSong, m_window), 0);
    EXPECT_FALSE(player.KnowsDuration());
    EXPECT_DOUBLE_EQ(player.GetDuration(), 1.0);
    EXPECT_EQ(player.GetVolume(), 0);
    Play(990);
    AdvanceSimulatedGraphs();
    ServeMessages();
    EXPECT_EQ(g_graphNotices, 0);
    Play(10);
    AdvanceSimulatedGraphs();
    ServeMessages();
    EXPECT_EQ(g_graphNotices, 1);
    EXPECT_DOUBLE_EQ(player.GetPosition(), 1.0);
    EXPECT_EQ(player.CheckEndOfStream(), 1);
}

TEST_F(MediaPlayerTest, SeekMovesThePlayingSong)
{
    MediaPlayer player(nullptr, m_window);
    ASSERT_EQ(player.OpenAndPlay(kSong, m_window), 0);
    EXPECT_EQ(player.Seek(7.5), 0);
    EXPECT_DOUBLE_EQ(player.GetPosition(), 7.5);
    Play(1000);
    EXPECT_DOUBLE_EQ(player.GetPosition(), 8.5);
}

TEST_F(MediaPlayerTest, VolumeIsSetAndRead)
{
    MediaPlayer player(kSong, m_window);
    EXPECT_EQ(player.SetVolume(-1200), 1);
    EXPECT_EQ(player.GetVolume(), -1200);
}

TEST_F(MediaPlayerTest, VolumeThatTheGraphRefusesStillAnswersOne)
{
    MediaPlayer player(kSong, m_window);
    EXPECT_EQ(player.SetVolume(1), 1);
    EXPECT_EQ(player.GetVolume(), -784);
}

TEST_F(MediaPlayerTest, DoubleRatePlaysTwiceAsFast)
{
    MediaPlayer player(nullptr, m_window);
    ASSERT_EQ(player.OpenAndPlay(kSong, m_window), 0);
    EXPECT_EQ(player.GetRate(), 1.0);
    EXPECT_TRUE(player.SetRate(2.0));
    Play(1000);
    EXPECT_DOUBLE_EQ(player.GetPosition(), 2.0);
    EXPECT_EQ(player.GetRate(), 2.0);
}

TEST_F(MediaPlayerTest, EndOfTheSongIsAnnouncedOnceAndTakenOnce)
{
    MediaPlayer player(nullptr, m_window);
    ASSERT_EQ(player.OpenAndPlay(kSong, m_window), 0);
    Play(11990);
    AdvanceSimulatedGraphs();
    ServeMessages();
    EXPECT_EQ(g_graphNotices, 0);
    Play(10);
    AdvanceSimulatedGraphs();
    AdvanceSimulatedGraphs();
    ServeMessages();
    EXPECT_EQ(g_graphNotices, 1);
    EXPECT_DOUBLE_EQ(player.GetPosition(), 12.0);
    EXPECT_EQ(player.CheckEndOfStream(), 1);
    EXPECT_EQ(player.CheckEndOfStream(), 0);
}

TEST_F(MediaPlayerTest, AbortByTheUserEndsTheSong)
{
    MediaPlayer player(nullptr, m_window);
    ASSERT_EQ(player.OpenAndPlay(kSong, m_window), 0);
    AbortCurrentSong();
    EXPECT_EQ(player.CheckEndOfStream(), 1);
}

TEST_F(MediaPlayerTest, SongThatBreaksOffEndsAfterItsErrorIsPassedOver)
{
    MediaPlayer player(nullptr, m_window);
    ASSERT_EQ(player.OpenAndPlay(kSong, m_window), 0);
    BreakCurrentSong();
    EXPECT_EQ(player.CheckEndOfStream(), 1);
    EXPECT_EQ(player.CheckEndOfStream(), 0);
}

TEST_F(MediaPlayerTest, NoticeOfAClosedGraphFindsNoEvent)
{
    MediaPlayer player(nullptr, m_window);
    ASSERT_EQ(player.OpenAndPlay(kSong, m_window), 0);
    FinishCurrentSong();
    ASSERT_EQ(player.OpenAndPlay(kOther, m_window), 0);
    ServeMessages();
    EXPECT_EQ(g_graphNotices, 1);
    EXPECT_EQ(player.CheckEndOfStream(), 0);
}

TEST_F(MediaPlayerTest, EventBeforeTheWindowIsNamedIsAnnouncedToIt)
{
    MediaPlayer player(kSong, nullptr);
    player.Play();
    FinishCurrentSong();
    player.SetNotifyWindow(m_window);
    ServeMessages();
    EXPECT_EQ(g_graphNotices, 1);
    player.Stop();
}

TEST_F(MediaPlayerTest, DestructionReleasesTheGraph)
{
    {
        MediaPlayer player(kSong, m_window);
        EXPECT_EQ(LiveSimulatedGraphs(), 1);
    }
    EXPECT_EQ(LiveSimulatedGraphs(), 0);
}

} // namespace
