#include "platform/linux/display/sdl_keys.h"

#include "platform/ce.h"
#include "platform/host/device_keys.h"

#include <SDL_keyboard.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

using namespace cardsong::display;
using cardsong::host::DeviceKeys;

TEST(SdlKeys, StandForTheKeysOfTheDevice)
{
    const std::pair<SDL_Keycode, WPARAM> pairs[] = {
        { SDLK_LEFT, VK_LEFT },
        { SDLK_RIGHT, VK_RIGHT },
        { SDLK_UP, VK_UP },
        { SDLK_DOWN, VK_DOWN },
        { SDLK_RETURN, VK_RETURN },
        { SDLK_KP_ENTER, VK_RETURN },
        { SDLK_TAB, VK_TAB },
        { SDLK_SPACE, VK_RETURN },
        { SDLK_LSHIFT, VK_SHIFT },
        { SDLK_RSHIFT, VK_SHIFT },
        { SDLK_ESCAPE, VK_F24 },
        { SDLK_F24, VK_F24 },
        { SDLK_AUDIOPLAY, VK_RETURN },
        { SDLK_AUDIOPREV, VK_LEFT },
        { SDLK_AUDIONEXT, VK_RIGHT },
        { SDLK_q, VK_F24 },
    };
    for (const auto& [key, code] : pairs)
        EXPECT_EQ(DeviceCodeOf(key), std::optional(static_cast<UINT>(code))) << SDL_GetKeyName(key);
}

TEST(SdlKeys, AreNothingWhereTheDeviceHasNoSuchKey)
{
    for (const SDL_Keycode key : { SDLK_s, SDLK_F1, SDLK_F23, SDLK_LCTRL, SDLK_UNKNOWN })
        EXPECT_EQ(DeviceCodeOf(key), std::nullopt) << SDL_GetKeyName(key);
}

TEST(SdlKeys, AreKnownByEveryNameOfTheTable)
{
    for (const auto& known : DeviceKeys()) {
        for (const std::string_view name : known.machineKeys) {
            if (name.empty())
                continue;
            const SDL_Keycode key = SDL_GetKeyFromName(std::string(name).c_str());
            EXPECT_NE(key, SDLK_UNKNOWN) << name;
            EXPECT_EQ(DeviceCodeOf(key), std::optional(known.code)) << name;
        }
    }
}

constexpr cardsong::CommandKey kCommands[] = { { 260, "Stop", { { "S", "AudioStop" } } },
                                               { 257, "Back5", { { "," } } } };
constexpr cardsong::TapKey kTaps[] = { { { 3, 4 }, { { "PageUp", "1" } } } };
constexpr cardsong::DesktopKeys kKeys{ TEXT("Main"), kCommands, kTaps };

TEST(SdlKeys, StandForTheCommandsThatTheProgramNames)
{
    EXPECT_EQ(CommandKeyOf(SDLK_s, kKeys), &kCommands[0]);
    EXPECT_EQ(CommandKeyOf(SDLK_AUDIOSTOP, kKeys), &kCommands[0]);
    EXPECT_EQ(CommandKeyOf(SDLK_COMMA, kKeys), &kCommands[1]);
    for (const SDL_Keycode key : { SDLK_PAGEUP, SDLK_RETURN, SDLK_UNKNOWN })
        EXPECT_EQ(CommandKeyOf(key, kKeys), nullptr) << key;
}

TEST(SdlKeys, StandForTheTapsThatTheProgramNames)
{
    EXPECT_EQ(TapKeyOf(SDLK_PAGEUP, kKeys), &kTaps[0]);
    EXPECT_EQ(TapKeyOf(SDLK_1, kKeys), &kTaps[0]);
    for (const SDL_Keycode key : { SDLK_s, SDLK_2, SDLK_UNKNOWN })
        EXPECT_EQ(TapKeyOf(key, kKeys), nullptr) << key;
}

TEST(SdlKeys, StandForTheButtonsAlongTheBottomEdge)
{
    EXPECT_EQ(BottomButtonOf(SDLK_F1), std::optional(1));
    EXPECT_EQ(BottomButtonOf(SDLK_F7), std::optional(7));
    for (const SDL_Keycode key : { SDLK_F8, SDLK_1, SDLK_F24, SDLK_UNKNOWN })
        EXPECT_EQ(BottomButtonOf(key), std::nullopt) << key;
}

} // namespace
