#include "platform/linux/display/machine_keys.h"

#include "platform/ce.h"
#include "platform/host/device_keys.h"
#include "tests/platform/display/recorded_input.h"

#include <SDL_keyboard.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

using namespace cardsong::display;
using namespace cardsong::test;
using cardsong::host::DeviceKeys;
using Log = std::vector<std::string>;

TEST(MachineKeys, StandForTheKeysOfTheDevice)
{
    const std::pair<const char*, WPARAM> pairs[] = {
        { "Left", VK_LEFT },        { "Right", VK_RIGHT },         { "Up", VK_UP },           { "Down", VK_DOWN },
        { "Return", VK_RETURN },    { "Keypad Enter", VK_RETURN }, { "Tab", VK_TAB },         { "Space", VK_RETURN },
        { "Left Shift", VK_SHIFT }, { "Right Shift", VK_SHIFT },   { "Escape", VK_F24 },      { "F24", VK_F24 },
        { "AudioPlay", VK_RETURN }, { "AudioPrev", VK_LEFT },      { "AudioNext", VK_RIGHT }, { "Q", VK_F24 },
    };
    for (const auto& [key, code] : pairs)
        EXPECT_EQ(DeviceCodeOf(key), std::optional(static_cast<UINT>(code))) << key;
}

TEST(MachineKeys, AreNothingWhereTheDeviceHasNoSuchKey)
{
    for (const char* key : { "S", "F1", "F23", "Left Ctrl", "" })
        EXPECT_EQ(DeviceCodeOf(key), std::nullopt) << key;
}

TEST(MachineKeys, AreCalledAsTheWindowLibraryCallsThem)
{
    for (const auto& known : DeviceKeys()) {
        for (const std::string_view name : known.machineKeys) {
            if (!name.empty()) {
                EXPECT_EQ(SDL_GetKeyName(SDL_GetKeyFromName(std::string(name).c_str())), name);
            }
        }
    }
}

constexpr cardsong::CommandKey kCommands[] = { { 260, "Stop", { { "S", "AudioStop" } } },
                                               { 257, "Back5", { { "," } }, cardsong::WhenKeyIsHeld::ActsAgain } };
constexpr cardsong::TapKey kTaps[] = { { { 3, 4 }, { { "PageUp", "1" } } } };
constexpr cardsong::DesktopKeys kKeys{ TEXT("Main"), kCommands, kTaps };

TEST(MachineKeys, StandForTheCommandsThatTheProgramNames)
{
    EXPECT_EQ(CommandKeyOf("S", kKeys), &kCommands[0]);
    EXPECT_EQ(CommandKeyOf("AudioStop", kKeys), &kCommands[0]);
    EXPECT_EQ(CommandKeyOf(",", kKeys), &kCommands[1]);
    for (const char* key : { "PageUp", "Return", "" })
        EXPECT_EQ(CommandKeyOf(key, kKeys), nullptr) << key;
}

TEST(MachineKeys, StandForTheTapsThatTheProgramNames)
{
    EXPECT_EQ(TapKeyOf("PageUp", kKeys), &kTaps[0]);
    EXPECT_EQ(TapKeyOf("1", kKeys), &kTaps[0]);
    for (const char* key : { "S", "2", "" })
        EXPECT_EQ(TapKeyOf(key, kKeys), nullptr) << key;
}

TEST(MachineKeys, StandForTheButtonsAlongTheBottomEdge)
{
    EXPECT_EQ(BottomButtonOf("F1"), std::optional(1));
    EXPECT_EQ(BottomButtonOf("F7"), std::optional(7));
    for (const char* key : { "F0", "F8", "F10", "F", "1", "F24", "" })
        EXPECT_EQ(BottomButtonOf(key), std::nullopt) << key;
}

TEST(MachineKeys, OfTheDeviceGoDownAgainAndUp)
{
    ResetRecordedInput();
    for (const KeyStroke stroke : { KeyStroke::Down, KeyStroke::DownAgain, KeyStroke::Up })
        StrikeMachineKey("Right", stroke, kKeys);
    EXPECT_EQ(RecordedInput(), (Log{ "key+ 39", "key+ 39", "key- 39" }));
}

TEST(MachineKeys, OfTheDesktopActWhenTheyGoDown)
{
    ResetRecordedInput();
    for (const char* key : { "S", ",", "1", "F2", "X", "" }) {
        for (const KeyStroke stroke : { KeyStroke::Down, KeyStroke::DownAgain, KeyStroke::Up })
            StrikeMachineKey(key, stroke, kKeys);
    }
    EXPECT_EQ(RecordedInput(), (Log{ "command 260 to Main", "command 257 to Main", "command 257 to Main",
                                     "tap 3,4 in front of Main", "tap 3,4 in front of Main", "bottom button 2" }));
}

} // namespace
