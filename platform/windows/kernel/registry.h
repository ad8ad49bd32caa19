// Where the machine's keys of a device lie: below a key of the user, one for each device tree, so that nothing of this
// machine's own settings is ever read or written.
#pragma once

#include <string>

namespace cardsong::kernel {

// Below HKEY_CURRENT_USER, for the device tree in force.
std::wstring MachineKeyOfDevice();

} // namespace cardsong::kernel
