#include "platform/linux/display/display_choice.h"
#include "platform/linux/display/first_display.h"

namespace cardsong::display {

std::unique_ptr<Display> MakeDesktopDisplay(const DisplayOptions& options)
{
    const DisplayChoice choice = ChooseDisplay();
    std::vector<std::unique_ptr<Display>> displays;
    if (!choice.waylandName.empty())
        displays.push_back(MakeWaylandDisplay(options, choice.waylandName));
    if (choice.triesSdl)
        displays.push_back(MakeSdlDisplay(options));
    return std::make_unique<FirstDisplay>(std::move(displays));
}

} // namespace cardsong::display
