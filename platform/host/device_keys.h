// The keys of the device: what presses them on a machine, and how scripts call them. Presses nothing itself.
#pragma once

#include "platform/ce.h"

#include <array>
#include <span>
#include <string_view>

namespace cardsong::host {

struct DeviceKey {
    UINT code = 0; // its virtual key code
    // How input scripts call it; empty: they cannot press it.
    std::string_view scriptName = {};
    // The machine's keys that stand for it, as SDL_GetKeyName calls them; the unused ones are empty.
    std::array<std::string_view, 4> machineKeys = {};
    // On a Windows desktop: the virtual key codes of other keys that stand for it; the unused ones are 0.
    std::array<UINT, 2> desktopCodes = {};
    // Whether the dialog manager keeps it: it never dispatches the key to a window that did not ask for it.
    bool isUsedUpByDialogs = false;
};
// Every key. Those with a script name stand in the order in which a user is told them.
[[nodiscard]] std::span<const DeviceKey> DeviceKeys();

} // namespace cardsong::host
