// What a key of the machine stands for.
#pragma once

#include "platform/desktop_keys.h"

#include <SDL_keycode.h>

#include <optional>

namespace cardsong::display {

// Its virtual key code; nothing for a key that the device does not have. The display's thread: the library keeps the
// name of the last key.
std::optional<UINT> DeviceCodeOf(SDL_Keycode key);
// The same for the keys that the program has named itself; null for others.
const CommandKey* CommandKeyOf(SDL_Keycode key, const DesktopKeys& keys);
const TapKey* TapKeyOf(SDL_Keycode key, const DesktopKeys& keys);
// Of F1 to F7, which stand for the buttons along the bottom edge: the button's number, from 1.
std::optional<int> BottomButtonOf(SDL_Keycode key);

} // namespace cardsong::display
