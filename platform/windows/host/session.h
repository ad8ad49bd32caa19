// One run of the player on this machine: device tree, screen, scripted input and its end, around WinMain.
#pragma once

#include "platform/host/options.h"

namespace cardsong::host {

// The exit status: WinMain's result; 1 when the device's files are missing or a picture cannot be written; 2 for a key
// script that makes no sense. What is wrong goes to standard error in one line.
[[nodiscard]] int RunSession(const Options& options);

} // namespace cardsong::host
