#include "platform/host/command_line.h"

#include <cstdio>

namespace cardsong::host {

std::optional<int> AnswerCommandLine(const std::vector<std::string>& arguments, const char* version, Options& options)
{
    constexpr int kBadOptions = 2;
    if (const auto error = ReadOptions(arguments, options)) {
        std::fprintf(stderr, "cardsong: %s\n", error->message.c_str());
        return kBadOptions;
    }
    if (options.showHelp) {
        std::fputs(HelpText().c_str(), stdout);
        return 0;
    }
    if (options.showVersion) {
        std::printf("cardsong %s\n", version);
        return 0;
    }
    return std::nullopt;
}

} // namespace cardsong::host
