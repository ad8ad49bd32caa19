#include "app/play_modes.h"

#include <gtest/gtest.h>

TEST(PlayModes, AreOffAtTheStart)
{
    const PlayModes modes;
    EXPECT_FALSE(modes.IsShuffleOn());
    EXPECT_EQ(modes.RepeatMode(), Repeat::Off);
    EXPECT_EQ(modes.shufflePrevious, 0);
    EXPECT_EQ(modes.shuffleNext, 0);
}

TEST(PlayModes, NeverRepeatAllAndOneSongTogether)
{
    PlayModes modes;
    const Repeat steps[] = { Repeat::All, Repeat::Single, Repeat::All, Repeat::Off, Repeat::Single, Repeat::Off };
    for (const Repeat step : steps) {
        modes.SetRepeat(step);
        EXPECT_EQ(modes.RepeatMode(), step);
        EXPECT_EQ(modes.repeatAll, step == Repeat::All ? 1 : 0);
        EXPECT_EQ(modes.repeatOne, step == Repeat::Single ? 1 : 0);
        EXPECT_EQ(modes.IsRepeatAllOn(), step == Repeat::All);
    }
}

TEST(PlayModes, AnyValueButZeroIsOn)
{
    PlayModes modes;
    modes.shuffle = -1;
    EXPECT_TRUE(modes.IsShuffleOn());
    EXPECT_EQ(modes.RepeatMode(), Repeat::Off);
}

TEST(PlayModes, TheNamesOfTheSingleModesAreTheModesThemselves)
{
    g_shuffle = 1;
    g_repeatAll = 2;
    g_repeatOne = 3;
    g_shufflePrevious = 4;
    g_shuffleNext = 5;
    EXPECT_EQ(g_playModes.shuffle, 1);
    EXPECT_EQ(g_playModes.repeatAll, 2);
    EXPECT_EQ(g_playModes.repeatOne, 3);
    EXPECT_EQ(g_playModes.shufflePrevious, 4);
    EXPECT_EQ(g_playModes.shuffleNext, 5);
    g_playModes = {};
}
