#include "platform/linux/display/display_probe.h"

#include "platform/linux/display/sdl_video.h"

#include <SDL.h>

namespace cardsong::display {

DisplayProbe ProbeDisplay()
{
    if (std::string trouble = StartSdlVideo(); !trouble.empty())
        return { {}, std::move(trouble) };
    DisplayProbe probe{ SDL_GetCurrentVideoDriver(), {} };
    SDL_Quit();
    return probe;
}

} // namespace cardsong::display
