#include "ctl/status_command.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

PlayerStatus Paused()
{
    PlayerStatus status;
    status.state = kPaused;
    status.number = 2;
    status.count = 12;
    status.positionMs = 3'661'999;
    status.lengthMs = 59'999;
    status.shuffle = true;
    status.repeat = kRepeatSingle;
    status.song = TEXT("02.say \"\u6B4C\"");
    return status;
}

TEST(StatusCommand, TellsPeopleLineByLine)
{
    EXPECT_EQ(StatusLines(Paused()), "state: paused\n"
                                     "song: 02.say \"\xE6\xAD\x8C\"\n"
                                     "position: 1:01:01 of 0:59\n"
                                     "number: 2 of 12\n"
                                     "shuffle: on\n"
                                     "repeat: single\n");
}

TEST(StatusCommand, AStoppedPlayerHasNoSong)
{
    PlayerStatus stopped;
    stopped.count = 3;
    EXPECT_EQ(StatusLines(stopped), "state: stopped\nsongs: 3\nshuffle: off\nrepeat: off\n");
}

TEST(StatusCommand, ShowsHoursOnlyFromAnHourOn)
{
    constexpr std::pair<std::int32_t, const char*> kTimes[] = {
        { 0, "0:00" },          { 59'999, "0:59" },       { 60'000, "1:00" },       { 725'000, "12:05" },
        { 3'599'999, "59:59" }, { 3'600'000, "1:00:00" }, { 7'507'000, "2:05:07" },
    };
    for (const auto& [milliseconds, text] : kTimes) {
        PlayerStatus status = Paused();
        status.positionMs = milliseconds;
        status.lengthMs = milliseconds;
        const std::string line = std::string("position: ") + text + " of " + text + "\n";
        EXPECT_NE(StatusLines(status).find(line), std::string::npos) << StatusLines(status);
    }
}

TEST(StatusCommand, TellsScriptsInJson)
{
    EXPECT_EQ(StatusJson(Paused()),
              "{\"state\":\"paused\",\"song\":\"02.say \\\"\xE6\xAD\x8C\\\"\",\"number\":2,\"count\":12,"
              "\"position_ms\":3661999,\"length_ms\":59999,\"shuffle\":true,\"repeat\":\"single\"}\n");
}

} // namespace
