#include "app/interruption.h"

#include "controls/seek_slider.h"
#include "tests/app/player_fixture.h"

using namespace cardsong::test;

namespace {

class Interrupted : public PlayerTest {
protected:
    void SetUp() override
    {
        PlayerTest::SetUp();
        Start();
        AddSong("a.mp3", 40);
        Press(VK_RETURN);
        Advance(100);
        g_pausedByInterruption = 1;
        g_savedPosition = 25.5;
    }
    void TearDown() override
    {
        g_interruption = {};
        PlayerTest::TearDown();
    }
};

} // namespace

TEST_F(Interrupted, ThePlayerShowsWhereTheInterruptionCame)
{
    EXPECT_TRUE(IsInterrupted());
    EXPECT_DOUBLE_EQ(ShownPosition(), 25.5);
    Advance(1);
    EXPECT_EQ(Narrow(g_elapsedText), "0:25");
}

TEST_F(Interrupted, WithoutOneThePlayerShowsWhereTheSongIs)
{
    g_interruption = {};
    EXPECT_FALSE(IsInterrupted());
    EXPECT_NEAR(ShownPosition(), 10.0, 0.001);
    Advance(1);
    EXPECT_EQ(Narrow(g_elapsedText), "0:10");
}

TEST_F(Interrupted, AMoveOfTheSliderGoesToWhereTheInterruptionCame)
{
    TakeSimulatedCalls();
    SendMessageW(m_window, kSliderMovedMessage, kSeekSliderId, 100);
    EXPECT_EQ(TakeSimulatedCalls(), std::vector<std::string>{ "SetPosition 25.5" });
    SendMessageW(m_window, kSliderMovedMessage, 0, 0);
    EXPECT_EQ(TakeSimulatedCalls(), std::vector<std::string>{ "SetPosition 25.5" });
}
