// One run of the player on this machine: device tree, display, scripted input and its end, around WinMain.
#pragma once

#include "platform/host/options.h"

namespace cardsong::host {

// The exit status: WinMain's result; 1 when the device's files or a named song are missing, the display cannot be
// opened or a picture cannot be written; 2 for a key script that makes no sense; 3 when the display went away. What is
// wrong goes to standard error in one line.
[[nodiscard]] int RunSession(Options options);

} // namespace cardsong::host
