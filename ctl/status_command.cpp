#include "ctl/status_command.h"

#include "ctl/device_option.h"
#include "ctl/player_link.h"
#include "ctl/text_forms.h"

namespace {

std::string Clock(std::int32_t milliseconds)
{
    const std::int32_t seconds = milliseconds / 1000;
    char text[32];
    if (seconds >= 3600)
        std::snprintf(text, sizeof text, "%d:%02d:%02d", seconds / 3600, seconds / 60 % 60, seconds % 60);
    else
        std::snprintf(text, sizeof text, "%d:%02d", seconds / 60, seconds % 60);
    return text;
}

int Run(std::span<const std::string_view> arguments, const Console& console)
{
    const DeviceArguments read = ReadDeviceOption(arguments);
    if (!read.isComplete)
        return Complain(console, "status: --device needs a value", kBadUsage);
    bool isJson = false;
    for (const std::string_view word : read.words) {
        if (word != "--json")
            return Complain(console, "status: takes no " + std::string(word), kBadUsage);
        isJson = true;
    }
    PlayerLink link(read.deviceDirectory);
    if (!link.IsPlayerThere())
        return Complain(console, "no player runs for " + link.DeviceDirectory(), kFailed);
    PlayerStatus status;
    if (const std::string trouble = link.AskStatus(status); !trouble.empty())
        return Complain(console, trouble, kFailed);
    return Print(console, isJson ? StatusJson(status) : StatusLines(status));
}

std::string Synopsis()
{
    return "status [--json]";
}

std::string OptionLines()
{
    return {};
}

constexpr std::string_view kDescription =
    "\nstatus prints what the player does: its state, the song and its place in the list, the\n"
    "position in it, the play modes; with --json as one JSON object.\n";

} // namespace

const Command kStatusCommand = { "status", Synopsis, kDescription, OptionLines, Run };

std::string StatusLines(const PlayerStatus& status)
{
    std::string lines = "state: " + Utf8(status.state) + '\n';
    if (status.number != 0)
        lines += "song: " + Utf8(status.song) + "\nposition: " + Clock(status.positionMs) + " of " +
                 Clock(status.lengthMs) + "\nnumber: " + std::to_string(status.number) + " of " +
                 std::to_string(status.count) + '\n';
    else
        lines += "songs: " + std::to_string(status.count) + '\n';
    return lines + "shuffle: " + (status.shuffle ? "on" : "off") + "\nrepeat: " + Utf8(status.repeat) + '\n';
}

std::string StatusJson(const PlayerStatus& status)
{
    return "{\"state\":" + JsonString(Utf8(status.state)) + ",\"song\":" + JsonString(Utf8(status.song)) +
           ",\"number\":" + std::to_string(status.number) + ",\"count\":" + std::to_string(status.count) +
           ",\"position_ms\":" + std::to_string(status.positionMs) +
           ",\"length_ms\":" + std::to_string(status.lengthMs) + ",\"shuffle\":" + (status.shuffle ? "true" : "false") +
           ",\"repeat\":" + JsonString(Utf8(status.repeat)) + "}\n";
}
