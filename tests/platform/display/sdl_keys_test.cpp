#include "platform/linux/display/sdl_keys.h"

#include "platform/ce.h"
#include "platform/host/device_keys.h"

#include <SDL_keyboard.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

using cardsong::display::DeviceCodeOf;
using cardsong::host::DeviceKeys;

TEST(SdlKeys, StandForTheKeysOfTheDevice)
{
    const std::pair<SDL_Keycode, WPARAM> pairs[] = {
        { SDLK_LEFT, VK_LEFT },        { SDLK_RIGHT, VK_RIGHT },    { SDLK_UP, VK_UP },
        { SDLK_DOWN, VK_DOWN },        { SDLK_RETURN, VK_RETURN },  { SDLK_KP_ENTER, VK_RETURN },
        { SDLK_TAB, VK_TAB },          { SDLK_SPACE, VK_SPACE },    { SDLK_LSHIFT, VK_SHIFT },
        { SDLK_RSHIFT, VK_SHIFT },     { SDLK_ESCAPE, VK_F24 },     { SDLK_F24, VK_F24 },
        { SDLK_AUDIOPLAY, VK_RETURN }, { SDLK_AUDIOPREV, VK_LEFT }, { SDLK_AUDIONEXT, VK_RIGHT },
    };
    for (const auto& [key, code] : pairs)
        EXPECT_EQ(DeviceCodeOf(key), std::optional(static_cast<UINT>(code))) << SDL_GetKeyName(key);
}

TEST(SdlKeys, AreNothingWhereTheDeviceHasNoSuchKey)
{
    for (const SDL_Keycode key : { SDLK_q, SDLK_F23, SDLK_LCTRL, SDLK_UNKNOWN })
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

} // namespace
