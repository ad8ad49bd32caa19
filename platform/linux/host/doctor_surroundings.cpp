// What the machine offers: a display, fonts, a message bus.
#include "platform/linux/bus/session_bus.h"
#include "platform/linux/display/display_probe.h"
#include "platform/linux/gdi/font_coverage.h"
#include "platform/linux/host/doctor_findings.h"

#include <cstdlib>

namespace cardsong::host {
namespace {

constexpr std::chrono::seconds kBusLimit{ 4 }; // less than the doctor waits for it
// Of traditional, of simplified Chinese, and of both.
constexpr char32_t kChinese[] = { U'愛', U'爱', U'歌' };

std::string NamedDisplays()
{
    std::string named;
    for (const char* variable : { "WAYLAND_DISPLAY", "DISPLAY" }) {
        if (const char* const value = std::getenv(variable); value != nullptr && *value != '\0')
            named += (named.empty() ? "" : ", ") + std::string(variable) + "=" + value;
    }
    return named;
}

} // namespace

Finding LookAtDisplay(const Options& options)
{
    if (options.headless)
        return { Verdict::Good, "none is needed with --headless" };
    const auto probe = display::ProbeDisplay();
    const std::string named = NamedDisplays();
    const std::string where = named.empty() ? std::string() : " (" + named + ")";
    if (probe.name.empty())
        return { Verdict::Bad, probe.trouble + where + "; --headless plays without one" };
    return { Verdict::Good, "a window opens on " + probe.name + where };
}

Finding LookAtFonts(const Options&)
{
    setenv("XDG_CACHE_HOME", "/dev/null", 1); // where the fonts' library would write a list of what it found
    if (gdi::FamilyThatShows(U'A').empty())
        return { Verdict::Bad, "none is installed; install fonts-wqy-microhei" };
    std::string family;
    for (const char32_t character : kChinese) {
        family = gdi::FamilyThatShows(character);
        if (family.empty())
            return { Verdict::Poor, "none shows Chinese titles; install fonts-wqy-microhei" };
    }
    return { Verdict::Good, family + " shows Chinese titles" };
}

Finding LookAtBus(const Options&)
{
    const std::string alone = ": other programs cannot reach the player";
    const std::string address = bus::SessionBusAddress();
    if (address.empty())
        return { Verdict::Poor, "there is no message bus" + alone + "; install dbus-user-session" };
    bus::SessionBus probe(address, {}, { [](const user::CrossingMessage&) {}, [] {} });
    if (!probe.Flush(kBusLimit))
        return { Verdict::Poor, "no message bus answers at " + address + alone };
    return { Verdict::Good, "other programs can reach the player" };
}

} // namespace cardsong::host
