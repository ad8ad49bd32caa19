// Brings the window library's video up, as the player needs it, on a display that somebody sees. Opens no window.
#pragma once

#include <string>

namespace cardsong::display {

// An empty text, or why there is no display. Only SDL_VIDEODRIVER, where the user sets it, makes the library show its
// windows to nobody. May wait for a server that hangs.
[[nodiscard]] std::string StartSdlVideo();

} // namespace cardsong::display
