// The X server behind a window of the window library, which tells neither its connection nor its end.
#pragma once

#include <SDL_video.h>

namespace cardsong::display {

// The connection to the server of `window`, which can be waited for; -1 where there is no such server.
int ConnectionOf(SDL_Window& window);

// When a call of the window library finds the X server dead, `lost` is called on that thread. It must neither return
// nor call X: the library would end the process. Does nothing where the window library has not loaded X.
void OnXServerLost(void (*lost)());

} // namespace cardsong::display
