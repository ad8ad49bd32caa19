#include "platform/console_program.h"

#include "platform/windows/kernel/utf8.h"

#include <windows.h>

#include <io.h>
#include <shellapi.h>

namespace cardsong::host {

// Nothing gets their places here.
void OpenStandardStreams() {}

// The system keeps the words in UTF-16; those of main have lost what the machine's code page lacks.
std::vector<std::string> ConsoleArguments(int, char**)
{
    SetConsoleOutputCP(CP_UTF8);
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i)
        arguments.push_back(kernel::Utf8FromUtf16(words[i]));
    LocalFree(words);
    return arguments;
}

bool IsTerminal(std::FILE* stream)
{
    return _isatty(_fileno(stream)) != 0;
}

} // namespace cardsong::host
