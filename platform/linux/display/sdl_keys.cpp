#include "platform/linux/display/sdl_keys.h"

#include "platform/host/device_keys.h"

#include <SDL_keyboard.h>

#include <algorithm>

namespace cardsong::display {

namespace {

template <typename Key>
const Key* FindKey(SDL_Keycode key, std::span<const Key> keys)
{
    const std::string_view name = SDL_GetKeyName(key);
    const auto isIt = [name](const Key& known) {
        return !name.empty() && std::ranges::find(known.keys.names, name) != known.keys.names.end();
    };
    const auto found = std::ranges::find_if(keys, isIt);
    return found != keys.end() ? &*found : nullptr;
}

} // namespace

std::optional<UINT> DeviceCodeOf(SDL_Keycode key)
{
    const std::string_view name = SDL_GetKeyName(key);
    if (name.empty()) // the rest of a row is, too
        return std::nullopt;
    for (const host::DeviceKey& known : host::DeviceKeys()) {
        if (std::ranges::find(known.machineKeys, name) != known.machineKeys.end())
            return known.code;
    }
    return std::nullopt;
}

const CommandKey* CommandKeyOf(SDL_Keycode key, const DesktopKeys& keys)
{
    return FindKey(key, keys.commands);
}

const TapKey* TapKeyOf(SDL_Keycode key, const DesktopKeys& keys)
{
    return FindKey(key, keys.taps);
}

std::optional<int> BottomButtonOf(SDL_Keycode key)
{
    return key >= SDLK_F1 && key <= SDLK_F7 ? std::optional(key - SDLK_F1 + 1) : std::nullopt;
}

} // namespace cardsong::display
