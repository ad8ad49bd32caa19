// cardsongctl: Cardsong's library and its player for people and scripts. Finds the command that is meant.
#include "ctl/registry_command.h"
#include "ctl/remote_commands.h"
#include "ctl/songs_command.h"
#include "ctl/status_command.h"
#include "platform/console_program.h"

#include <vector>

namespace {

// Every command, in the order of the help.
std::vector<const Command*> Commands()
{
    std::vector<const Command*> commands = { &kSongsCommand };
    for (const Command& command : RemoteCommands())
        commands.push_back(&command);
    commands.push_back(&kStatusCommand);
    commands.push_back(&kRegistryCommand);
    return commands;
}

// What follows a description of several lines stands apart.
std::string Spaced(std::string_view description)
{
    const bool isOneLine = description.find('\n') + 1 == description.size();
    return std::string(description) + (isOneLine ? "" : "\n");
}

std::string HelpText()
{
    std::string synopses;
    std::string descriptions;
    std::string options;
    for (const Command* const command : Commands()) {
        synopses += (synopses.empty() ? "usage: cardsongctl " : "       cardsongctl ") + command->synopsis() + '\n';
        descriptions += Spaced(command->description);
        options += command->optionLines();
    }
    return synopses + '\n' + descriptions + options +
           OptionLine("--device=DIR", "for every command but songs: the device, named as for the player") +
           OptionLine("-h, --help", "print this") + OptionLine("--version", "print the version") +
           "\nExit status: 0 done; 1 no player runs, it does not answer, or the work failed; 2 wrong use.\n";
}

} // namespace

int main(int count, char** arguments)
{
    using namespace cardsong::host;
    OpenStandardStreams();
    const Console console = { stdout, stderr, IsTerminal(stderr) && !IsTerminal(stdout) };
    const std::vector<std::string> texts = ConsoleArguments(count, arguments);
    const std::vector<std::string_view> words(texts.begin(), texts.end());
    for (const std::string_view word : words) {
        if (word == "-h" || word == "--help")
            return Print(console, HelpText());
        if (word == "--version")
            return Print(console, "cardsongctl " CARDSONG_VERSION "\n");
    }
    if (words.empty())
        return Complain(console, "no command; --help tells which there are", kBadUsage);
    for (const Command* const command : Commands()) {
        if (command->name == words[0])
            return command->run(std::span(words).subspan(1), console);
    }
    return Complain(console, "unknown command " + std::string(words[0]), kBadUsage);
}
