// The Windows program: reads its options, lays out the device tree, sets up the screen, and runs the player in it.
#include "platform/host/command_line.h"
#include "platform/windows/host/session.h"
#include "platform/windows/host/user_defaults.h"
#include "platform/windows/kernel/utf8.h"

#include <windows.h>

#include <shellapi.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

std::vector<std::string> Arguments()
{
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i)
        arguments.push_back(cardsong::kernel::Utf8FromUtf16(words[i]));
    LocalFree(words);
    return arguments;
}

// A program with windows has no console of its own. Its output goes where it was redirected to, or else to the console
// that started it.
void OpenConsole()
{
    if (GetFileType(GetStdHandle(STD_ERROR_HANDLE)) != FILE_TYPE_UNKNOWN || !AttachConsole(ATTACH_PARENT_PROCESS))
        return;
    std::freopen("CONOUT$", "w", stdout);
    std::freopen("CONOUT$", "w", stderr);
    SetConsoleOutputCP(CP_UTF8);
}

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int)
{
    using namespace cardsong::host;
    OpenConsole();
    Options options = UserDefaults();
    const auto answer = AnswerCommandLine(Arguments(), CARDSONG_VERSION, options);
    return answer ? *answer : RunSession(options);
}
