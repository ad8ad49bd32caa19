// What the user's own surroundings say where the command line is silent.
#pragma once

#include "platform/host/options.h"

namespace cardsong::host {

// The device in the user's folder for programs, the music folder as the card, the language of the desktop.
[[nodiscard]] Options UserDefaults();

} // namespace cardsong::host
