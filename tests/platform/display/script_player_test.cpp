#include "platform/host/script_player.h"

#include "platform/linux/display/device_hands.h"
#include "platform/linux/kernel/clock.h"
#include "tests/platform/display/recorded_input.h"

#include <gtest/gtest.h>

namespace {

using namespace cardsong::host;
using namespace cardsong::test;

KeyStep Key(WPARAM key)
{
    return { static_cast<UINT>(key) };
}

class Playing : public testing::Test {
protected:
    Playing() { ResetRecordedInput(); }
    cardsong::display::DeviceHands hands{ TEXT("Main") };
    ScriptPlayer player{ hands };
};

TEST_F(Playing, PressesAndReleases)
{
    player.Start({ Key(VK_RETURN), TapStep{ 10, 20 } });
    const std::vector<std::string> expected = { "key+ 13", "key- 13", "down 10,20", "up 10,20" };
    EXPECT_EQ(WaitForInput(4), expected);
    player.Stop();
    EXPECT_TRUE(player.IsFinished());
}

TEST_F(Playing, GivesCommandsToTheMainWindow)
{
    player.Start({ CommandStep{ 262 } });
    EXPECT_EQ(WaitForInput(1), std::vector<std::string>{ "command 262 to Main" });
    player.Stop();
}

TEST_F(Playing, WaitsOnTheClockInForce)
{
    cardsong::kernel::VirtualClock clock;
    cardsong::kernel::InstallClock(&clock);
    player.Start({ Key(VK_UP), WaitStep{ 1000 }, Key(VK_DOWN) });
    EXPECT_EQ(WaitForInput(2).size(), 2U);
    while (!player.IsFinished())
        clock.Advance(1000); // the thread may not have begun to wait at the first advance
    EXPECT_EQ(RecordedInput().size(), 4U);
    player.Stop();
    cardsong::kernel::InstallClock(nullptr);
}

TEST_F(Playing, StopEndsAWait)
{
    player.Start({ Key(VK_UP), WaitStep{ 3'600'000 }, Key(VK_DOWN) });
    WaitForInput(2);
    player.Stop();
    EXPECT_EQ(RecordedInput().size(), 2U);
}

TEST_F(Playing, RemembersAPictureThatCouldNotBeWritten)
{
    testing::internal::CaptureStderr();
    player.Start({ ShotStep{ "/nonexistent/folder/a.png" }, Key(VK_UP) });
    WaitForInput(2);
    player.Stop();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "cardsong: cannot write the picture /nonexistent/folder/a.png\n");
    EXPECT_FALSE(player.AllWritten());
}

} // namespace
