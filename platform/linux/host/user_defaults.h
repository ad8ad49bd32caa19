// What the user's own surroundings say where the command line is silent.
#pragma once

#include "platform/host/options.h"

namespace cardsong::host {

// The device in the user's data folder, the music folder as the card, the language of the environment.
[[nodiscard]] Options UserDefaults();

} // namespace cardsong::host
