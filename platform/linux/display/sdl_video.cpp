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

std::string WhyThereIsNone()
{
    const char* const driver = SDL_getenv("SDL_VIDEODRIVER");
    if (driver != nullptr && *driver != '\0') // the library speaks of it
        return SDL_GetError();
    const char* const server = SDL_getenv("DISPLAY");
    return server != nullptr && *server != '\0' ? std::string("cannot open the X display ") + server
                                                : "there is no display: no Wayland compositor, no X server, no screen";
}

// No OpenGL (100 MB), no events made twice from touch and mouse, no screen kept awake by a player in a pocket.
void SetHints()
{
    SDL_SetHint(SDL_HINT_VIDEODRIVER, DriversThatShow().c_str()); // unless the user names one
    SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
    SDL_SetHint(SDL_HINT_TOUCH_MOUSE_EVENTS, "0");
    SDL_SetHint(SDL_HINT_MOUSE_TOUCH_EVENTS, "0");
    SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1"); // else a tap within 10 ms of the focus is swallowed
    SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1"); // the host ends the program
    SDL_SetHint(SDL_HINT_APP_NAME, "cardsong");
}

} // namespace

std::string StartSdlVideo()
{
    SetHints();
    return SDL_Init(SDL_INIT_VIDEO) == 0 ? std::string() : WhyThereIsNone();
}

} // namespace cardsong::display
