#include "app/play_modes.h"
#include "app/title_ticker.h"
#include "tests/app/player_fixture.h"

#include <algorithm>
#include <set>

using namespace cardsong::test;

namespace {

class SongSteps : public PlayerTest {
protected:
    void SetUp() override
    {
        PlayerTest::SetUp();
        Start();
        AddSong("a.mp3", 30);
        AddSong("b.mp3", 20);
        AddSong("c.mp3", 10);
    }
    static std::vector<int> Marks()
    {
        std::vector<int> marks;
        for (const MediaFileEntry& entry : SongList(PlayList))
            marks.push_back(entry.playMark);
        return marks;
    }
};

} // namespace

TEST_F(SongSteps, NextPlaysTheSongThatFollows)
{
    Press(VK_RETURN);
    Press(VK_RIGHT);
    EXPECT_EQ(g_currentNumber, 2);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_EQ(Narrow(g_titleText), "02.b");
    EXPECT_EQ(Narrow(g_totalText), "0:20");
    EXPECT_EQ(Marks(), (std::vector<int>{ 0, 2, 0 }));
}

TEST_F(SongSteps, NextOnTheLastSongStops)
{
    Press(VK_RETURN);
    Press(VK_RIGHT);
    Press(VK_RIGHT);
    EXPECT_EQ(g_currentNumber, 3);
    Press(VK_RIGHT);
    EXPECT_EQ(g_songLoaded, 0);
    EXPECT_EQ(g_stepBusy, 0);
}

TEST_F(SongSteps, PreviousGoesBackOneSong)
{
    Press(VK_RETURN);
    Press(VK_RIGHT);
    Press(VK_LEFT);
    EXPECT_EQ(g_currentNumber, 1);
    EXPECT_EQ(Narrow(g_titleText), "01.a");
}

TEST_F(SongSteps, PreviousOnTheFirstSongChangesNothing)
{
    Press(VK_RETURN);
    Advance(20);
    Press(VK_LEFT);
    EXPECT_EQ(g_currentNumber, 1);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_EQ(Narrow(g_elapsedText), "0:02");
    EXPECT_EQ(g_stepBusy, 0);
}

TEST_F(SongSteps, NextWhilePausedOpensTheNextSongPausedAtItsStart)
{
    Press(VK_RETURN);
    Advance(20);
    Press(VK_RETURN);
    Press(VK_RIGHT);
    EXPECT_EQ(g_currentNumber, 2);
    EXPECT_EQ(g_songLoaded, 1);
    EXPECT_EQ(g_isPlaying, 0);
    EXPECT_EQ(Narrow(g_titleText), "02.b");
    EXPECT_TRUE(IsShown(kCommandPlay));
    Advance(20);
    EXPECT_EQ(Narrow(g_elapsedText), "0:00");
}

TEST_F(SongSteps, NextAndPreviousNeedALoadedSong)
{
    Press(VK_RIGHT);
    Press(VK_LEFT);
    EXPECT_EQ(g_songLoaded, 0);
    EXPECT_EQ(g_stepBusy, 0);
    EXPECT_EQ(LiveSimulatedGraphs(), 0);
}

TEST_F(SongSteps, AStepInProgressIsNotInterruptedByAnother)
{
    Press(VK_RETURN);
    g_stepBusy = 1;
    Press(VK_RIGHT);
    EXPECT_EQ(g_currentNumber, 1);
    EXPECT_EQ(g_stepBusy, 1);
    g_stepBusy = 0;
    Press(VK_RIGHT);
    EXPECT_EQ(g_currentNumber, 2);
}

TEST_F(SongSteps, TheNextAndBackKeysStep)
{
    Press(VK_RETURN);
    Tap(kNextKey);
    EXPECT_EQ(g_currentNumber, 2);
    Tap(kBackKey);
    EXPECT_EQ(g_currentNumber, 1);
}

TEST_F(SongSteps, NextWhilePausedBeforeUnplayableSongsStaysSilent)
{
    AddBadSong("d.mp3");
    Press(VK_RETURN);
    Press(VK_RIGHT);
    Press(VK_RIGHT);
    EXPECT_EQ(g_currentNumber, 3);
    Press(VK_RETURN); // paused
    Press(VK_RIGHT);  // the bad one leaves, and the first song would be next
    EXPECT_EQ(g_songLoaded, 0);
    EXPECT_EQ(g_isPlaying, 0);
    EXPECT_EQ(PlayList.GetCount(), 3);
}

TEST_F(SongSteps, ShuffleNeverRepeatsASongUntilAllWerePlayed)
{
    Press(VK_RETURN);
    SendMessageW(m_window, WM_COMMAND, kCommandShuffleOff, 0);
    std::set<int> played{ g_currentNumber };
    for (int i = 0; i < 2; ++i) {
        Press(VK_RIGHT);
        EXPECT_TRUE(played.insert(g_currentNumber).second);
    }
    EXPECT_EQ(played.size(), 3U);
    g_playModes = {};
}

TEST_F(SongSteps, AfterAPreviousInShuffleNextReturnsToTheSongThatWasLeft)
{
    Press(VK_RETURN);
    SendMessageW(m_window, WM_COMMAND, kCommandShuffleOff, 0);
    Press(VK_RIGHT);
    const int left = g_currentNumber;
    Press(VK_LEFT);
    EXPECT_EQ(g_currentNumber, 1);
    Press(VK_RIGHT);
    EXPECT_EQ(g_currentNumber, left);
    EXPECT_EQ(std::ranges::count_if(Marks(), [](int mark) { return mark != 0; }), 1);
    g_playModes = {};
}
