// cardsongctl: Cardsong's library for people and scripts. Finds the command that is meant.
#include "ctl/songs_command.h"

#include <array>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::array kCommands = { &kSongsCommand };

std::string HelpText()
{
    std::string synopses;
    std::string descriptions;
    std::string options;
    for (const Command* const command : kCommands) {
        synopses += (synopses.empty() ? "usage: cardsongctl " : "       cardsongctl ") + command->synopsis() + '\n';
        descriptions += '\n' + std::string(command->description);
        options += command->optionLines();
    }
    return synopses + descriptions + '\n' + options + OptionLine("-h, --help", "print this") +
           OptionLine("--version", "print the version");
}

} // namespace

int main(int count, char** arguments)
{
    const Console console = { stdout, stderr, isatty(STDERR_FILENO) != 0 && isatty(STDOUT_FILENO) == 0 };
    const std::vector<std::string_view> words(arguments + 1, arguments + count);
    for (const std::string_view word : words) {
        if (word == "-h" || word == "--help") {
            std::fputs(HelpText().c_str(), console.out);
            return 0;
        }
        if (word == "--version") {
            std::fputs("cardsongctl " CARDSONG_VERSION "\n", console.out);
            return 0;
        }
    }
    if (words.empty())
        return Complain(console, "no command; --help tells which there are", kBadUsage);
    for (const Command* const command : kCommands) {
        if (command->name == words[0])
            return command->run(std::span(words).subspan(1), console);
    }
    return Complain(console, "unknown command " + std::string(words[0]), kBadUsage);
}
