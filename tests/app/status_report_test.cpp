#include "app/status_report.h"

#include "tests/app/player_fixture.h"

using namespace cardsong::test;

namespace {

class StatusReport : public PlayerTest {
protected:
    void SetUp() override
    {
        PlayerTest::SetUp();
        auto tree = cardsong::kernel::CurrentDeviceTree();
        tree.debugOutput = true;
        cardsong::kernel::InstallDeviceTree(tree);
        Start();
        AddSong("a.mp3", 63);
        ::testing::internal::CaptureStderr();
    }
};

} // namespace

TEST_F(StatusReport, TellsEachSecondWhatPlaysWhenTheStartAskedForIt)
{
    g_launchOptions.report = true;
    Press(VK_RETURN);
    Advance(21);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "01.a  0:01 of 1:03\n01.a  0:02 of 1:03\n");
}

TEST_F(StatusReport, TellsWhichLineOfTheLyricsHasCome)
{
    g_launchOptions.report = true;
    m_device.WriteFile("card/a.lrc", "[00:00.00]x[00:01.50]y[00:02.00]z");
    Press(VK_RETURN);
    Advance(21);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "01.a  lyrics line 0 at 100 ms\n"
                                                        "01.a  0:01 of 1:03\n"
                                                        "01.a  lyrics line 1 at 1500 ms\n"
                                                        "01.a  0:02 of 1:03\n"
                                                        "01.a  lyrics line 2 at 2100 ms\n");
}

TEST_F(StatusReport, IsSilentOtherwise)
{
    Press(VK_RETURN);
    Advance(21);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}
