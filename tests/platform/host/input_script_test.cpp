#include "platform/host/input_script.h"

#include "platform/host/device_keys.h"

#include <gtest/gtest.h>

namespace {

using namespace cardsong::host;
using Steps = std::vector<ScriptStep>;

constexpr cardsong::CommandKey kCommands[] = { { 260, "Stop" }, { 24, "" }, { 263, "Shuffle" } };

Steps Parsed(std::string_view text)
{
    auto result = ParseInputScript(text, kCommands);
    if (const auto* error = std::get_if<ScriptError>(&result))
        ADD_FAILURE() << error->message;
    return std::holds_alternative<Steps>(result) ? std::get<Steps>(result) : Steps{};
}

std::string ErrorOf(std::string_view text)
{
    const auto result = ParseInputScript(text, kCommands);
    const auto* error = std::get_if<ScriptError>(&result);
    return error != nullptr ? error->message : "no error";
}

KeyStep Key(WPARAM key)
{
    return { static_cast<UINT>(key) };
}

TEST(InputScript, AnEmptyTextHasNoSteps)
{
    EXPECT_EQ(Parsed(""), Steps{});
    EXPECT_EQ(Parsed(" \t\n"), Steps{});
}

TEST(InputScript, KnowsTheDevicesKeys)
{
    const Steps expected = { Key(VK_RETURN), Key(VK_LEFT), Key(VK_RIGHT), Key(VK_UP), Key(VK_DOWN), Key(VK_F24) };
    EXPECT_EQ(Parsed("Enter Left Right Up Down Exit"), expected);
}

TEST(InputScript, KnowsTheProgramsCommands)
{
    EXPECT_EQ(Parsed("Shuffle Stop"), (Steps{ CommandStep{ 263 }, CommandStep{ 260 } }));
}

TEST(InputScript, ReadsWaitsTapsAndPictures)
{
    const Steps expected = { WaitStep{ 500 }, TapStep{ 319, 239 }, ShotStep{ "/tmp/a.png" } };
    EXPECT_EQ(Parsed("  wait:500\ttap:319,239\nshot:/tmp/a.png "), expected);
}

TEST(InputScript, PressesEachKeyByTheNameOfTheTable)
{
    for (const DeviceKey& key : DeviceKeys()) {
        if (!key.scriptName.empty()) {
            EXPECT_EQ(Parsed(key.scriptName), Steps{ KeyStep{ key.code } }) << key.scriptName;
        }
    }
}

TEST(InputScript, NamesAnUnknownWordAndEveryKey)
{
    std::string names;
    for (const DeviceKey& key : DeviceKeys()) {
        if (!key.scriptName.empty())
            names += std::string(key.scriptName) + ' ';
    }
    EXPECT_TRUE(names.starts_with("Enter Left Right Up Down Exit ")) << names;
    names += "Stop Shuffle";
    EXPECT_EQ(ErrorOf("Enter Jump"), "\"Jump\": neither a key (" + names + ") nor wait:MS, tap:X,Y or shot:FILE");
}

TEST(InputScript, RefusesWaitsThatMeanNothing)
{
    for (const char* word : { "wait:", "wait:x", "wait:-1", "wait:5s", "wait:3600001", "wait:99999999999999999999" })
        EXPECT_EQ(ErrorOf(word), "\"" + std::string(word) + "\": wait: takes milliseconds, 0 to 3600000");
}

TEST(InputScript, RefusesTapsOutsideTheScreen)
{
    for (const char* word : { "tap:", "tap:1", "tap:1,", "tap:,1", "tap:320,0", "tap:0,240", "tap:-1,0", "tap:1,2,3" })
        EXPECT_EQ(ErrorOf(word), "\"" + std::string(word) + "\": tap: takes X,Y with X 0 to 319 and Y 0 to 239");
}

TEST(InputScript, RefusesAPictureWithoutAName)
{
    EXPECT_EQ(ErrorOf("shot:"), "\"shot:\": shot: takes a file name");
}

} // namespace
