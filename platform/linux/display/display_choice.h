// Which desktop the user is at, as the environment tells. Opens nothing.
#pragma once

#include <string>

namespace cardsong::display {

// What to try, in this order.
struct DisplayChoice {
    std::string waylandName; // of the compositor's socket; empty: not on Wayland
    bool triesSdl = false;
    bool operator==(const DisplayChoice&) const = default;
};

// A Wayland compositor that is named comes first, then an X server that is, then a compositor that only stands by: who
// is logged in from elsewhere has the X server of that place. SDL_VIDEODRIVER, where the user sets it, decides alone.
DisplayChoice ChooseDisplay();

} // namespace cardsong::display
