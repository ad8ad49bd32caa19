#include "platform/linux/display/sdl_keys.h"

#include "platform/linux/ce/messages.h"

namespace cardsong::display {
namespace {

struct KeyPair {
    SDL_Keycode from;
    WPARAM to;
};
constexpr KeyPair kKeys[] = {
    { SDLK_LEFT, VK_LEFT },        { SDLK_RIGHT, VK_RIGHT },     { SDLK_UP, VK_UP },           { SDLK_DOWN, VK_DOWN },
    { SDLK_RETURN, VK_RETURN },    { SDLK_KP_ENTER, VK_RETURN }, { SDLK_TAB, VK_TAB },         { SDLK_SPACE, VK_SPACE },
    { SDLK_LSHIFT, VK_SHIFT },     { SDLK_RSHIFT, VK_SHIFT },    { SDLK_ESCAPE, VK_F24 },      { SDLK_F24, VK_F24 },
    { SDLK_AUDIOPLAY, VK_RETURN }, { SDLK_AUDIOPREV, VK_LEFT },  { SDLK_AUDIONEXT, VK_RIGHT },
};

} // namespace

std::optional<UINT> DeviceKey(SDL_Keycode key)
{
    for (const KeyPair& pair : kKeys) {
        if (pair.from == key)
            return static_cast<UINT>(pair.to);
    }
    return std::nullopt;
}

} // namespace cardsong::display
