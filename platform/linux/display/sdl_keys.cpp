#include "platform/linux/display/sdl_keys.h"

#include "platform/host/device_keys.h"

#include <SDL_keyboard.h>

#include <algorithm>

namespace cardsong::display {

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

} // namespace cardsong::display
