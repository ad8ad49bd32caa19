// The player that runs, as a start that takes its place meets it.
#pragma once

#include <string>

namespace cardsong::host {

// Tells the player whose device's folder this is to exit, again and again until it has heard it: one that is only
// starting hears nothing yet. Waits until it has saved its list, 10 seconds at most, 3 without a message bus. False
// when it runs after all. Harmless when none runs. Call it while this process has one thread.
[[nodiscard]] bool EndPlayerOn(const std::string& deviceDirectory);

} // namespace cardsong::host
