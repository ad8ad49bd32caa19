#include "platform/linux/display/display_probe.h"

#include "platform/linux/display/display.h"
#include "platform/linux/display/display_choice.h"
#include "platform/linux/display/sdl_video.h"
#include "platform/linux/display/wayland_connection.h"

#include <SDL.h>

namespace cardsong::display {
namespace {

std::string WhyCompositorIsNone(const std::string& name)
{
    WaylandConnection connection;
    std::string trouble = connection.Connect(name);
    EventWait wait;
    if (trouble.empty() && !connection.AwaitAnswers(wait, kWaylandAnswerLimitMs))
        trouble = "it does not answer";
    return trouble.empty() ? trouble : "cannot open the Wayland display " + name + ": " + trouble;
}

} // namespace

DisplayProbe ProbeDisplay()
{
    const DisplayChoice choice = ChooseDisplay();
    std::string trouble;
    if (!choice.waylandName.empty()) {
        trouble = WhyCompositorIsNone(choice.waylandName);
        if (trouble.empty())
            return { "wayland", {} };
    }
    if (choice.triesSdl) {
        const std::string sdlTrouble = StartSdlVideo();
        if (sdlTrouble.empty()) {
            DisplayProbe probe{ SDL_GetCurrentVideoDriver(), {} };
            SDL_Quit();
            return probe;
        }
        trouble += (trouble.empty() ? "" : "; ") + sdlTrouble;
    }
    return { {}, std::move(trouble) };
}

} // namespace cardsong::display
