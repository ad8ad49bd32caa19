#include "app/play_modes.h"
#include "tests/app/player_fixture.h"

using namespace cardsong::test;

namespace {

class PlayModeCommands : public PlayerTest {
protected:
    void SetUp() override
    {
        PlayerTest::SetUp();
        Start();
        AddSong("a.mp3", 30);
        AddSong("b.mp3", 20);
        AddSong("c.mp3", 10);
    }
    void TearDown() override
    {
        g_playModes = {};
        PlayerTest::TearDown();
    }
    void Command(WORD id) { SendMessageW(m_window, WM_COMMAND, id, 0); }
    static std::vector<int> Played()
    {
        std::vector<int> flags;
        for (const MediaFileEntry& entry : SongList(PlayList))
            flags.push_back(static_cast<int>(entry.playedInShuffle));
        return flags;
    }
    // Previous, next.
    std::array<bool, 2> StepKeys() const { return { IsEnabled(kCommandPrevious), IsEnabled(kCommandNext) }; }
};

constexpr std::array<bool, 2> kBothOn{ true, true };
constexpr std::array<bool, 2> kNextOnly{ false, true };
constexpr std::array<bool, 2> kPreviousOnly{ true, false };

} // namespace

TEST_F(PlayModeCommands, ATapOnTheShuffleKeyTurnsItsFace)
{
    Press(VK_RETURN);
    Tap(kShuffleKey);
    EXPECT_EQ(g_shuffle, 1);
    EXPECT_TRUE(IsShown(kCommandShuffleOn));
    EXPECT_FALSE(IsShown(kCommandShuffleOff));
    Tap(kShuffleKey);
    EXPECT_EQ(g_shuffle, 0);
    EXPECT_FALSE(IsShown(kCommandShuffleOn));
    EXPECT_TRUE(IsShown(kCommandShuffleOff));
}

TEST_F(PlayModeCommands, TapsOnTheRepeatKeyGoRoundItsThreeFaces)
{
    Press(VK_RETURN);
    const std::pair<Repeat, WORD> rounds[] = { { Repeat::All, kCommandRepeatAll },
                                               { Repeat::Single, kCommandRepeatSingle },
                                               { Repeat::Off, kCommandRepeatOff },
                                               { Repeat::All, kCommandRepeatAll } };
    for (const auto& [mode, face] : rounds) {
        Tap(kRepeatKey);
        EXPECT_EQ(g_playModes.RepeatMode(), mode);
        for (const WORD other : { kCommandRepeatOff, kCommandRepeatAll, kCommandRepeatSingle })
            EXPECT_EQ(IsShown(other), other == face) << face << " " << other;
    }
}

TEST_F(PlayModeCommands, TheRepeatModeStepsWhicheverFaceIsPressed)
{
    Press(VK_RETURN);
    Command(kCommandRepeatSingle);
    EXPECT_EQ(g_playModes.RepeatMode(), Repeat::All);
    Command(kCommandRepeatOff);
    EXPECT_EQ(g_playModes.RepeatMode(), Repeat::Single);
    Command(kCommandRepeatAll);
    EXPECT_EQ(g_playModes.RepeatMode(), Repeat::Off);
}

TEST_F(PlayModeCommands, ShuffleGoingOnForgetsWhatWasPlayedButTheCurrentSong)
{
    for (MediaFileEntry& entry : SongList(PlayList))
        entry.playedInShuffle = 1;
    Press(VK_RETURN);
    Press(VK_RIGHT);
    EXPECT_EQ(Played(), (std::vector<int>{ 1, 1, 1 }));
    Command(kCommandShuffleOff);
    EXPECT_EQ(Played(), (std::vector<int>{ 0, 1, 0 }));
    Command(kCommandShuffleOn); // going off leaves it
    EXPECT_EQ(Played(), (std::vector<int>{ 0, 1, 0 }));
}

TEST_F(PlayModeCommands, ShuffleGoingOnWithoutASongMarksNone)
{
    SongList(PlayList).At(1).playedInShuffle = 1;
    Command(kCommandShuffleOff);
    EXPECT_EQ(g_shuffle, 1);
    EXPECT_EQ(Played(), (std::vector<int>{ 0, 0, 0 }));
}

TEST_F(PlayModeCommands, ASongThatShufflePlaysCountsAsPlayed)
{
    Press(VK_RETURN);
    Command(kCommandShuffleOff);
    Press(VK_RIGHT);
    EXPECT_EQ(std::ranges::count(Played(), 1), 2);
    Press(VK_RIGHT);
    EXPECT_EQ(Played(), (std::vector<int>{ 1, 1, 1 }));
}

TEST_F(PlayModeCommands, InOrderASongThatPlaysDoesNotCountForShuffle)
{
    Press(VK_RETURN);
    Press(VK_RIGHT);
    EXPECT_EQ(Played(), (std::vector<int>{ 0, 0, 0 }));
}

TEST_F(PlayModeCommands, ShuffleGoingOnEnablesBothSteps)
{
    Press(VK_RETURN);
    EXPECT_EQ(StepKeys(), kNextOnly);
    Command(kCommandShuffleOff);
    EXPECT_EQ(StepKeys(), kBothOn);
}

TEST_F(PlayModeCommands, ShuffleGoingOffAsksRepeatForTheFirstSongOnly)
{
    Press(VK_RETURN);
    Command(kCommandShuffleOff);
    Command(kCommandShuffleOn);
    EXPECT_EQ(StepKeys(), kNextOnly);
    Command(kCommandRepeatOff); // all
    Command(kCommandShuffleOff);
    Command(kCommandShuffleOn);
    EXPECT_EQ(StepKeys(), kBothOn);
    Press(VK_RIGHT);
    Press(VK_RIGHT);
    EXPECT_EQ(g_currentNumber, 3);
    Command(kCommandShuffleOff);
    Command(kCommandShuffleOn);
    EXPECT_EQ(StepKeys(), kPreviousOnly); // although repeat goes round
}

TEST_F(PlayModeCommands, RepeatAllEnablesBothStepsAndTheOthersTakeThemBack)
{
    Press(VK_RETURN);
    Command(kCommandRepeatOff);
    EXPECT_EQ(StepKeys(), kBothOn);
    Command(kCommandRepeatOff); // single
    EXPECT_EQ(StepKeys(), kNextOnly);
    Press(VK_RIGHT);
    Press(VK_RIGHT);
    Command(kCommandRepeatOff); // off
    EXPECT_EQ(StepKeys(), kPreviousOnly);
    Command(kCommandRepeatOff); // all
    EXPECT_EQ(StepKeys(), kBothOn);
}

TEST_F(PlayModeCommands, WithRepeatAllTheFirstSongMayStepBack)
{
    Press(VK_RETURN);
    Command(kCommandRepeatOff);
    Press(VK_LEFT);
    EXPECT_EQ(g_currentNumber, 3);
    EXPECT_EQ(StepKeys(), kBothOn);
    Press(VK_RIGHT);
    EXPECT_EQ(g_currentNumber, 1);
    EXPECT_EQ(StepKeys(), kBothOn);
}

TEST_F(PlayModeCommands, StopKeepsTheModesAndTheirFaces)
{
    Press(VK_RETURN);
    Command(kCommandShuffleOff);
    Command(kCommandRepeatOff);
    Command(kCommandStop);
    EXPECT_EQ(g_shuffle, 1);
    EXPECT_EQ(g_playModes.RepeatMode(), Repeat::All);
    EXPECT_TRUE(IsShown(kCommandShuffleOn));
    EXPECT_TRUE(IsShown(kCommandRepeatAll));
    EXPECT_FALSE(IsEnabled(kCommandShuffleOn));
    EXPECT_FALSE(IsEnabled(kCommandRepeatAll));
}
