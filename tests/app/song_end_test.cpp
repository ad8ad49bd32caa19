#include "app/song_end.h"

#include "app/play_modes.h"
#include "tests/app/player_fixture.h"

using namespace cardsong::test;

namespace {

class SongEnd : public PlayerTest {
protected:
    void SetUp() override
    {
        PlayerTest::SetUp();
        Start();
        AddSong("a.mp3", 30);
        AddSong("b.mp3", 20);
        AddSong("c.mp3", 10);
        Press(VK_RETURN);
    }
    void TearDown() override
    {
        g_playModes = {};
        PlayerTest::TearDown();
    }
    void EndSong()
    {
        FinishCurrentSong();
        Pump();
    }
};

} // namespace

TEST_F(SongEnd, WithoutAModeThePlayerStops)
{
    EndSong();
    EXPECT_EQ(g_songLoaded, 0);
    EXPECT_EQ(g_isPlaying, 0);
    EXPECT_EQ(g_currentNumber, 0);
}

TEST_F(SongEnd, WithRepeatAllTheNextSongPlaysAndBehindTheLastTheFirst)
{
    g_playModes.SetRepeat(Repeat::All);
    for (const int number : { 2, 3, 1, 2 }) {
        EndSong();
        EXPECT_EQ(g_currentNumber, number);
        EXPECT_EQ(g_isPlaying, 1);
    }
}

TEST_F(SongEnd, WithRepeatSingleTheSameSongPlaysFromItsBeginning)
{
    g_playModes.SetRepeat(Repeat::Single);
    Advance(50);
    TakeSimulatedCalls();
    EndSong();
    EXPECT_EQ(g_currentNumber, 1);
    EXPECT_EQ(g_isPlaying, 1);
    const auto calls = TakeSimulatedCalls();
    EXPECT_EQ(std::ranges::count(calls, "RenderFile \\SDMMC\\a.mp3"), 1);
    Advance(10);
    EXPECT_EQ(Narrow(g_elapsedText), "0:01");
}

TEST_F(SongEnd, WithRepeatSingleTheSameSongPlaysAlsoWhenAnotherRowIsMarked)
{
    g_playModes.SetRepeat(Repeat::Single);
    SongList(PlayList).At(0).playMark = 0;
    SongList(PlayList).At(2).playMark = 3;
    EndSong();
    EXPECT_EQ(g_currentNumber, 1);
    EXPECT_EQ(SongList(PlayList).At(0).playMark, 1);
    EXPECT_EQ(SongList(PlayList).At(2).playMark, 0);
}

TEST_F(SongEnd, WithShuffleASongPlaysThatWasNotPlayedYet)
{
    SendMessageW(m_window, WM_COMMAND, kCommandShuffleOff, 0);
    EndSong();
    const int second = g_currentNumber;
    EXPECT_NE(second, 1);
    EndSong();
    EXPECT_NE(g_currentNumber, 1);
    EXPECT_NE(g_currentNumber, second);
    EXPECT_EQ(g_isPlaying, 1);
}

TEST_F(SongEnd, RepeatSingleComesBeforeShuffle)
{
    SendMessageW(m_window, WM_COMMAND, kCommandShuffleOff, 0);
    g_playModes.SetRepeat(Repeat::Single);
    EndSong();
    EXPECT_EQ(g_currentNumber, 1);
}

TEST_F(SongEnd, AnEndThatIsToldAfterStopIsDropped)
{
    g_playModes.SetRepeat(Repeat::All);
    FinishCurrentSong(); // its notice waits in the queue
    SendMessageW(m_window, WM_COMMAND, kCommandStop, 0);
    Pump();
    EXPECT_EQ(g_songLoaded, 0);
    EXPECT_EQ(g_isPlaying, 0);
    g_playModes.SetRepeat(Repeat::Single);
    Press(VK_RETURN);
    FinishCurrentSong();
    SendMessageW(m_window, WM_COMMAND, kCommandStop, 0);
    Pump();
    EXPECT_EQ(g_isPlaying, 0);
}

TEST_F(SongEnd, ANoticeThatIsNoEndChangesNothing)
{
    g_playModes.SetRepeat(Repeat::All);
    SendMessageW(m_window, WM_USER + 20, 0, 0);
    EXPECT_EQ(g_currentNumber, 1);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_TRUE(IsEnabled(kCommandNext));
}
