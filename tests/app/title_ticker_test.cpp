#include "app/title_ticker.h"

#include <gtest/gtest.h>

namespace {

class TitleTicker : public ::testing::Test {
protected:
    void SetUp() override
    {
        g_titleWidthPx = 100;
        ResetTitleStrips();
        StartTitleStrips();
    }
    static void Scroll(int ticks)
    {
        for (int i = 0; i < ticks; ++i)
            ScrollTitleStrips(TitleMotion::Moving);
    }
};

} // namespace

TEST_F(TitleTicker, ATitleStartsReadableInTheDisplay)
{
    EXPECT_TRUE(g_titleStripA.isActive);
    EXPECT_EQ(g_titleStripA.rect.left, 180);
    EXPECT_EQ(g_titleStripA.rect.top, 45);
    EXPECT_EQ(g_titleStripA.rect.right, 280);
    EXPECT_EQ(g_titleStripA.rect.bottom, 115);
    EXPECT_FALSE(g_titleStripB.isActive);
}

TEST_F(TitleTicker, AnActiveStripMovesFivePixelsATick)
{
    Scroll(1);
    EXPECT_EQ(g_titleStripA.rect.left, 175);
    EXPECT_EQ(g_titleStripA.rect.right, 275);
}

TEST_F(TitleTicker, NothingMovesWhilePaused)
{
    ScrollTitleStrips(TitleMotion::Standing);
    EXPECT_EQ(g_titleStripA.rect.left, 180);
}

TEST_F(TitleTicker, TheCopyEntersAtTheRightEdgeWhenTheTitleHasPassedTheLeftOne)
{
    Scroll(37); // left edge at -5 after the 37th tick
    EXPECT_EQ(g_titleStripA.rect.left, -5);
    EXPECT_FALSE(g_titleStripB.isActive);
    Scroll(1);
    EXPECT_TRUE(g_titleStripB.isActive);
    EXPECT_EQ(g_titleStripB.rect.left, 313); // entered at 318 and moved with the tick
    EXPECT_EQ(g_titleStripB.rect.right, 413);
}

TEST_F(TitleTicker, ALongTitleLetsTheCopyInOnlyWhenItsEndHasComeFarEnough)
{
    g_titleWidthPx = 600;
    ResetTitleStrips();
    StartTitleStrips();
    while (g_titleStripA.rect.right > 268) {
        EXPECT_FALSE(g_titleStripB.isActive);
        Scroll(1);
    }
    EXPECT_EQ(g_titleStripA.rect.right, 265);
    EXPECT_FALSE(g_titleStripB.isActive);
    Scroll(1);
    EXPECT_TRUE(g_titleStripB.isActive);
}

TEST_F(TitleTicker, AStripThatHasLeftTheDisplayIsInactiveAndComesBackBehindTheOther)
{
    Scroll(38);
    ASSERT_TRUE(g_titleStripB.isActive);
    Scroll(18);
    EXPECT_EQ(g_titleStripA.rect.right, 0);
    EXPECT_TRUE(g_titleStripA.isActive);
    Scroll(1);
    EXPECT_FALSE(g_titleStripA.isActive);
    while (g_titleStripB.rect.left >= 0)
        Scroll(1);
    Scroll(1);
    EXPECT_TRUE(g_titleStripA.isActive);
    EXPECT_EQ(g_titleStripA.rect.left, 313); // entered at 318 and moved with the tick
}

TEST_F(TitleTicker, TheTickerNeverRunsEmpty)
{
    for (int i = 0; i < 1000; ++i) {
        Scroll(1);
        EXPECT_TRUE(g_titleStripA.isActive || g_titleStripB.isActive) << "tick " << i;
    }
}

TEST_F(TitleTicker, StartingWhileATitleRunsChangesNothing)
{
    Scroll(3);
    StartTitleStrips();
    EXPECT_EQ(g_titleStripA.rect.left, 165);
}

TEST_F(TitleTicker, ResetPutsTheStripsAway)
{
    Scroll(38);
    ResetTitleStrips();
    EXPECT_FALSE(g_titleStripA.isActive);
    EXPECT_FALSE(g_titleStripB.isActive);
    EXPECT_EQ(g_titleStripA.rect.left, 180);
    EXPECT_EQ(g_titleStripA.rect.right, 318);
    EXPECT_EQ(g_titleStripB.rect.right, 0);
}
