#include "platform/linux/display/sdl_video.h"

#include <SDL.h>

#include <string_view>

namespace cardsong::display {
namespace {

// What SDL falls back to when no display answers.
constexpr std::string_view kSeenByNobody = "offscreen";

bool IsDriverAskedFor()
{
    const char* const asked = SDL_GetHint(SDL_HINT_VIDEODRIVER);
    return asked != nullptr && *asked != '\0';
}

} // namespace

std::string StartSdlVideo()
{
    if (SDL_Init(SDL_INIT_VIDEO) != 0)
        return SDL_GetError();
    if (SDL_GetCurrentVideoDriver() != kSeenByNobody || IsDriverAskedFor())
        return {};
    SDL_Quit();
    return "no display answers: no X server, no Wayland compositor and no bare screen";
}

} // namespace cardsong::display
