#include "platform/linux/display/sdl_video.h"

#include <SDL.h>

#include <string_view>

namespace cardsong::display {
namespace {

// The library's drivers, without those that show nothing and without its own for Wayland, which does not without
// OpenGL.
std::string DriversThatShow()
{
    std::string drivers;
    for (int index = 0; index < SDL_GetNumVideoDrivers(); ++index) {
        const std::string_view driver = SDL_GetVideoDriver(index);
        if (driver == "wayland" || driver == "offscreen" || driver == "dummy" || driver == "evdev")
            continue;
        drivers += drivers.empty() ? "" : ",";
        drivers += driver;
    }
    return drivers;
}

std::string Variable(const char* name)
{
    const char* const value = SDL_getenv(name);
    return value != nullptr ? value : "";
}

std::string WhyThereIsNone()
{
    if (!Variable("SDL_VIDEODRIVER").empty()) // the library speaks of it
        return SDL_GetError();
    const std::string server = Variable("DISPLAY");
    return server.empty() ? "no display answers: no X server, no Wayland compositor and no bare screen"
                          : "cannot open the X display " + server;
}

} // namespace

std::string StartSdlVideo()
{
    SDL_SetHint(SDL_HINT_VIDEODRIVER, DriversThatShow().c_str()); // what the user sets goes before
    return SDL_Init(SDL_INIT_VIDEO) == 0 ? std::string() : WhyThereIsNone();
}

} // namespace cardsong::display
