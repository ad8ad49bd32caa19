#include "platform/console_program.h"

#include <unistd.h>

namespace cardsong::host {

std::vector<std::string> ConsoleArguments(int count, char** arguments)
{
    return { arguments + 1, arguments + count };
}

bool IsTerminal(std::FILE* stream)
{
    return isatty(fileno(stream)) != 0;
}

} // namespace cardsong::host
