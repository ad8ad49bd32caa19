#include "ctl/remote_commands.h"

#include "common/device_messages.h"
#include "controls/player_button_ids.h"
#include "ctl/device_option.h"
#include "ctl/player_link.h"
#include "ctl/text_forms.h"

namespace {

constexpr DWORD kMostState = 0xFFFF; // it travels in half a word

// What a command does: it acts on `link` and returns what went wrong. `number`: of the one that takes a number.
using Action = std::string (*)(PlayerLink& link, DWORD number);

template <WORD Id>
std::string Post(PlayerLink& link, DWORD)
{
    return link.PostCommand(Id);
}

template <const WCHAR* const& Message>
std::string Broadcast(PlayerLink& link, DWORD)
{
    return link.Broadcast(Message, 0);
}

// One command of the player both plays and pauses: it is given only when it does what is meant.
std::string Toggle(PlayerLink& link, WORD command, bool wantsToPlay)
{
    PlayerStatus status;
    if (std::string trouble = link.AskStatus(status); !trouble.empty())
        return trouble;
    const bool isPlaying = status.state == kPlaying;
    return isPlaying == wantsToPlay ? std::string() : link.PostCommand(command);
}

std::string Play(PlayerLink& link, DWORD)
{
    return Toggle(link, kCommandPlay, true);
}

std::string Pause(PlayerLink& link, DWORD)
{
    return Toggle(link, kCommandPause, false);
}

std::string TellAudioState(PlayerLink& link, DWORD state)
{
    return link.Broadcast(kAudioManagerMessage, static_cast<WPARAM>(state) << 16);
}

int Act(const char* name, Action action, bool takesNumber, std::span<const std::string_view> arguments,
        const Console& console)
{
    const std::string prefix = std::string(name) + ": ";
    const DeviceArguments read = ReadDeviceOption(arguments);
    if (!read.isComplete)
        return Complain(console, prefix + "--device needs a value", kBadUsage);
    DWORD number = 0;
    const bool isNumber = takesNumber && read.words.size() == 1 && ReadNumber(read.words[0], number);
    if (takesNumber && (!isNumber || number > kMostState))
        return Complain(console, prefix + "takes a number from 0 to 65535", kBadUsage);
    if (!takesNumber && !read.words.empty())
        return Complain(console, prefix + "takes no " + std::string(read.words[0]), kBadUsage);
    PlayerLink link(read.deviceDirectory);
    if (!link.IsPlayerThere())
        return Complain(console, "no player runs for " + link.DeviceDirectory(), kFailed);
    const std::string trouble = action(link, number);
    return trouble.empty() ? 0 : Complain(console, trouble, kFailed);
}

enum class Takes { Nothing, Number };

// A row of the table: the functions of a command hold its name.
template <const auto& Name, Action What, Takes Argument = Takes::Nothing>
constexpr Command Remote(std::string_view description)
{
    return { Name, [] { return std::string(Name) + (Argument == Takes::Number ? " N" : ""); }, description,
             [] { return std::string(); },
             [](std::span<const std::string_view> arguments, const Console& console) {
                 return Act(Name, What, Argument == Takes::Number, arguments, console);
             } };
}

constexpr char kPlayName[] = "play";
constexpr char kPauseName[] = "pause";
constexpr char kNextName[] = "next";
constexpr char kPreviousName[] = "previous";
constexpr char kStopName[] = "stop";
constexpr char kMassStorageName[] = "mass-storage";
constexpr char kAudioStateName[] = "audio-state";
constexpr char kLyricsChangedName[] = "lyrics-changed";
constexpr char kAreYouMeName[] = "are-you-me";

constexpr Command kCommands[] = {
    Remote<kPlayName, Play>("  play            goes on with the song, or begins; one that plays goes on playing\n"),
    Remote<kPauseName, Pause>("  pause           pauses; a player that does not play stays as it is\n"),
    Remote<kNextName, Post<kCommandNext>>("  next            steps to the next song\n"),
    Remote<kPreviousName, Post<kCommandPrevious>>("  previous        steps to the song before\n"),
    Remote<kStopName, Post<kCommandStop>>("  stop            stops\n"),
    Remote<kMassStorageName, Broadcast<kMassStorageMessage>>(
        "  mass-storage    tells all programs that the card goes to a computer: the player ends\n"),
    Remote<kAudioStateName, TellAudioState, Takes::Number>(
        "  audio-state N   tells all programs the audio manager's new state\n"),
    Remote<kLyricsChangedName, Broadcast<kLyricsSettingMessage>>(
        "  lyrics-changed  tells all programs that the settings of the lyrics have changed\n"),
    Remote<kAreYouMeName, Broadcast<kAreYouMeMessage>>("  are-you-me      calls the player to the front\n"),
};

} // namespace

std::span<const Command> RemoteCommands()
{
    return kCommands;
}
