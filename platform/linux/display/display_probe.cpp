#include "platform/linux/display/display_probe.h"

#include "platform/linux/display/display_choice.h"
#include "platform/linux/display/sdl_video.h"
#include "platform/linux/display/wayland_display.h"

#include <SDL.h>

namespace cardsong::display {

DisplayProbe ProbeDisplay()
{
    const DisplayChoice choice = ChooseDisplay();
    std::string troubles = choice.waylandName.empty() ? std::string() : ProbeWaylandDisplay(choice.waylandName);
    if (!choice.waylandName.empty() && troubles.empty())
        return { "wayland", {} };
    if (!choice.triesSdl)
        return { {}, std::move(troubles) };
    if (const std::string trouble = StartSdlVideo(); !trouble.empty())
        return { {}, troubles.empty() ? trouble : troubles + "; " + trouble };
    DisplayProbe probe{ SDL_GetCurrentVideoDriver(), {} };
    SDL_Quit();
    return probe;
}

} // namespace cardsong::display
