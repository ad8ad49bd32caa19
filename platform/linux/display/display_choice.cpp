#include "platform/linux/display/display_choice.h"

#include <cstdlib>
#include <filesystem>

namespace cardsong::display {

namespace {

constexpr char kCommonSocket[] = "wayland-0";

std::string Variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

bool HasCommonSocket()
{
    const std::string folder = Variable("XDG_RUNTIME_DIR");
    std::error_code error;
    return !folder.empty() && std::filesystem::is_socket(std::filesystem::path(folder) / kCommonSocket, error);
}

} // namespace

DisplayChoice ChooseDisplay()
{
    const std::string driver = Variable("SDL_VIDEODRIVER"); // names separated by commas
    const std::string wayland = Variable("WAYLAND_DISPLAY");
    const std::string waylandOrCommon = wayland.empty() ? kCommonSocket : wayland;
    const bool hasX = !Variable("DISPLAY").empty();
    if (driver.starts_with("wayland"))
        return { waylandOrCommon, driver.find(',') != std::string::npos };
    if (!driver.empty())
        return { {}, true };
    if (!wayland.empty())
        return { wayland, hasX };
    if (!hasX && HasCommonSocket())
        return { kCommonSocket, true };
    return { {}, true };
}

} // namespace cardsong::display
