#include "app/step_choice.h"

#include "library/media_scan.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>

namespace {

class StepChoice : public ::testing::Test {
protected:
    void TearDown() override { SongList(m_songs).FreeAll(); }
    void AddSongs(int count)
    {
        for (int i = 0; i < count; ++i)
            SongList(m_songs).Append(std::make_unique<MediaFileEntry>());
    }
    int Next(int current) { return ChooseNext(ConstSongList(m_songs), current, m_modes); }
    int Previous(int current) { return ChoosePrevious(ConstSongList(m_songs), current, m_modes); }

    CPtrListCtrl m_songs;
    PlayModes m_modes;
};

} // namespace

TEST_F(StepChoice, InOrderGoesOneOnAndOneBack)
{
    AddSongs(3);
    EXPECT_EQ(Next(1), 2);
    EXPECT_EQ(Next(2), 3);
    EXPECT_EQ(Previous(3), 2);
    EXPECT_EQ(Previous(2), 1);
}

TEST_F(StepChoice, TheEndsOfTheListLeadNowhere)
{
    AddSongs(3);
    EXPECT_EQ(Next(3), 0);
    EXPECT_EQ(Previous(1), 0);
    m_modes.SetRepeat(Repeat::Single);
    EXPECT_EQ(Next(3), 0);
    EXPECT_EQ(Previous(1), 0);
}

TEST_F(StepChoice, RepeatAllGoesRound)
{
    AddSongs(3);
    m_modes.SetRepeat(Repeat::All);
    EXPECT_EQ(Next(3), 1);
    EXPECT_EQ(Next(2), 3);
    EXPECT_EQ(Previous(1), 3);
    EXPECT_EQ(Previous(2), 1);
}

TEST_F(StepChoice, AListOfOneGoesRoundToItself)
{
    AddSongs(1);
    m_modes.SetRepeat(Repeat::All);
    EXPECT_EQ(Next(1), 1);
    EXPECT_EQ(Previous(1), 1);
    m_modes.SetRepeat(Repeat::Off);
    m_modes.shuffle = 1;
    EXPECT_EQ(Next(1), 1);
    EXPECT_EQ(Previous(1), 1);
}

TEST_F(StepChoice, ShuffleDrawsEveryUnplayedSongOnceAndThenAny)
{
    AddSongs(40);
    m_modes.shuffle = 1;
    std::set<int> drawn;
    int current = 1;
    SongList(m_songs).At(0).playedInShuffle = 1;
    for (int i = 0; i < 39; ++i) {
        current = Next(current);
        ASSERT_GE(current, 2);
        ASSERT_LE(current, 40);
        EXPECT_TRUE(drawn.insert(current).second) << current;
        SongList(m_songs).At(current - 1).playedInShuffle = 1;
    }
    for (int i = 0; i < 4000; ++i) { // any song fails to come among them once in 10^44 runs
        const int again = Next(current);
        ASSERT_GE(again, 1);
        ASSERT_LE(again, 40);
        drawn.insert(again);
    }
    EXPECT_EQ(drawn.size(), 40U); // the first song, too
}

TEST_F(StepChoice, ShuffleRemembersTheSongThatWasLeftInBothDirections)
{
    AddSongs(40);
    m_modes.shuffle = 1;
    const int second = Next(7);
    EXPECT_EQ(g_playModes.shufflePrevious, 0);
    EXPECT_EQ(m_modes.shufflePrevious, 7);
    EXPECT_EQ(Previous(second), 7);
    EXPECT_EQ(m_modes.shufflePrevious, 0);
    EXPECT_EQ(m_modes.shuffleNext, second);
    EXPECT_EQ(Next(7), second);
    EXPECT_EQ(m_modes.shuffleNext, 0);
    EXPECT_EQ(m_modes.shufflePrevious, 7);
}

TEST_F(StepChoice, PreviousDoesNotAskWhatWasPlayed)
{
    AddSongs(3);
    m_modes.shuffle = 1;
    SongList(m_songs).At(1).playedInShuffle = 1;
    std::set<int> drawn;
    for (int i = 0; i < 200; ++i)
        drawn.insert(Previous(1));
    EXPECT_EQ(drawn, (std::set<int>{ 1, 2, 3 }));
}

TEST_F(StepChoice, ARememberedNumberBehindTheEndOfAShorterListIsDropped)
{
    AddSongs(2);
    m_modes.shuffle = 1;
    m_modes.shuffleNext = 3;
    SongList(m_songs).At(0).playedInShuffle = 1;
    EXPECT_EQ(Next(1), 2);
    EXPECT_EQ(m_modes.shuffleNext, 0);
    m_modes.shufflePrevious = 9;
    const int back = Previous(1);
    EXPECT_GE(back, 1);
    EXPECT_LE(back, 2);
    EXPECT_EQ(m_modes.shufflePrevious, 0);
    m_modes.shuffleNext = 2; // the last place is one
    SongList(m_songs).At(1).playedInShuffle = 1;
    EXPECT_EQ(Next(1), 2);
}
