// Where a device's machine keys lie: below a key of the user, one for each device tree. The settings of this machine
// are neither read nor written.
#pragma once

#include <string>

namespace cardsong::kernel {

// Below HKEY_CURRENT_USER, for the device tree in force.
std::wstring MachineKeyOfDevice();

} // namespace cardsong::kernel
