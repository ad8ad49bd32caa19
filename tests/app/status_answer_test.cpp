#include "app/status_answer.h"

#include "app/play_modes.h"
#include "common/device_messages.h"
#include "common/player_status.h"
#include "tests/app/player_fixture.h"

using namespace cardsong::test;

namespace {

class StatusAnswer : public PlayerTest {
protected:
    void SetUp() override
    {
        PlayerTest::SetUp();
        Start();
        AddSong("a.mp3", 63);
        AddSong("b.mp3", 5);
    }
    void TearDown() override
    {
        g_playModes = {};
        PlayerTest::TearDown();
    }
    // As another program asks.
    std::optional<PlayerStatus> Ask(WPARAM request)
    {
        PostMessageW(m_window, RegisterWindowMessageW(kStatusRequestMessage), request, 0);
        Pump();
        return LoadStatus();
    }
};

} // namespace

TEST_F(StatusAnswer, AStoppedPlayerTellsHowManySongsThereAre)
{
    PlayerStatus expected;
    expected.request = 7;
    expected.count = 2;
    EXPECT_EQ(Ask(7), expected);
}

TEST_F(StatusAnswer, APlayingPlayerTellsItsSongAndWhereItIs)
{
    Press(VK_RETURN);
    Advance(21);
    PlayerStatus expected;
    expected.request = 8;
    expected.state = kPlaying;
    expected.number = 1;
    expected.count = 2;
    expected.positionMs = 2100;
    expected.lengthMs = 63000;
    expected.song = TEXT("01.a");
    EXPECT_EQ(Ask(8), expected);
}

TEST_F(StatusAnswer, APausedPlayerKeepsItsPlace)
{
    Press(VK_RETURN);
    Advance(15);
    Press(VK_RETURN);
    Advance(10);
    const auto status = Ask(9);
    ASSERT_TRUE(status);
    EXPECT_TRUE(status->state == kPaused);
    EXPECT_EQ(status->positionMs, 1500);
}

TEST_F(StatusAnswer, TheModesAreTold)
{
    g_playModes.shuffle = 1;
    g_playModes.SetRepeat(Repeat::Single);
    EXPECT_TRUE(Ask(1)->shuffle);
    EXPECT_TRUE(Ask(2)->repeat == kRepeatSingle);
    g_playModes.SetRepeat(Repeat::All);
    EXPECT_TRUE(Ask(3)->repeat == kRepeatAll);
}

TEST_F(StatusAnswer, NothingIsWrittenUnasked)
{
    Press(VK_RETURN);
    Advance(21);
    EXPECT_FALSE(LoadStatus());
}

TEST_F(StatusAnswer, ARequestWithoutANumberIsNobodys)
{
    EXPECT_FALSE(Ask(0));
    if constexpr (sizeof(WPARAM) > 4) {
        EXPECT_FALSE(Ask(static_cast<WPARAM>(0x1'0000'0005)));
    }
}
