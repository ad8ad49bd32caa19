// What a key of the machine stands for, by the name that the tables of keys use. Knows no library's codes.
#pragma once

#include "platform/desktop_keys.h"

#include <optional>
#include <string_view>

namespace cardsong::display {

// Its virtual key code; nothing for a key that the device does not have. An empty name is no key's.
std::optional<UINT> DeviceCodeOf(std::string_view name);
// The same for the keys that the program has named itself; null for others.
const CommandKey* CommandKeyOf(std::string_view name, const DesktopKeys& keys);
const TapKey* TapKeyOf(std::string_view name, const DesktopKeys& keys);
// Of F1 to F7, which stand for the buttons along the bottom edge: the button's number, from 1.
std::optional<int> BottomButtonOf(std::string_view name);

enum class KeyStroke { Down, DownAgain, Up };
// Does what the key stands for. One that the device does not have acts when it goes down.
void StrikeMachineKey(std::string_view name, KeyStroke stroke, const DesktopKeys& keys);

} // namespace cardsong::display
