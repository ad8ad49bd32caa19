// Brings the library's video up on a display that somebody sees. Opens no window.
#pragma once

#include <string>

namespace cardsong::display {

// Empty, or why there is no display. Where none answers, the library would show its windows nowhere and say nothing; it
// may do so only when SDL_VIDEODRIVER asks for that. May wait for a server that hangs.
[[nodiscard]] std::string StartSdlVideo();

} // namespace cardsong::display
