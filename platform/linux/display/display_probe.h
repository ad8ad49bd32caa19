// Which display the player would open its window on. Opens none itself.
#pragma once

#include <string>

namespace cardsong::display {

struct DisplayProbe {
    std::string name;    // of the kind of display: "x11", "wayland", "KMSDRM"; empty when none answers
    std::string trouble; // why none does
};

// Reaches the display in the way the player does. May wait for a server that hangs, and one that dies may end the
// process: ask in a process of its own.
[[nodiscard]] DisplayProbe ProbeDisplay();

} // namespace cardsong::display
