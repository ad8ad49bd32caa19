#include "platform/console_program.h"

#include <fcntl.h>
#include <unistd.h>

namespace cardsong::host {

void OpenStandardStreams()
{
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        if (fcntl(stream, F_GETFD) < 0) // the lowest free number is this one
            static_cast<void>(open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY));
    }
}

std::vector<std::string> ConsoleArguments(int count, char** arguments)
{
    return { arguments + 1, arguments + count };
}

bool IsTerminal(std::FILE* stream)
{
    return isatty(fileno(stream)) != 0;
}

} // namespace cardsong::host
