// Which of the device's keys a key of the machine is.
#pragma once

#include "platform/linux/ce/types.h"

#include <SDL_keycode.h>

#include <optional>

namespace cardsong::display {

// Nothing for a key that the device does not have.
std::optional<UINT> DeviceKey(SDL_Keycode key);

} // namespace cardsong::display
