// Which of the device's keys a key of the machine is.
#pragma once

#include "platform/linux/ce/types.h"

#include <SDL_keycode.h>

#include <optional>

namespace cardsong::display {

// Its virtual key code; nothing for a key that the device does not have. The display's thread: the library keeps the
// name of the last key.
std::optional<UINT> DeviceCodeOf(SDL_Keycode key);

} // namespace cardsong::display
