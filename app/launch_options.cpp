#include "app/launch_options.h"

LaunchOptions g_launchOptions;

namespace {

struct LaunchWord {
    WStringView word;
    bool LaunchOptions::*field;
};
constexpr LaunchWord kWords[] = {
    { TEXT("--fill"), &LaunchOptions::fillFromCard },  { TEXT("--play"), &LaunchOptions::playAtOnce },
    { TEXT("--tell-exit"), &LaunchOptions::tellExit }, { TEXT("--lyrics-utf8"), &LaunchOptions::lyricsUtf8 },
    { TEXT("--report"), &LaunchOptions::report },
};

} // namespace

LaunchOptions ReadLaunchOptions(const WCHAR* commandLine)
{
    LaunchOptions options;
    if (commandLine == nullptr)
        return options;
    WStringView rest(commandLine);
    while (!rest.empty()) {
        const auto end = rest.find(TEXT(' '));
        for (const LaunchWord& known : kWords) {
            if (known.word == rest.substr(0, end))
                options.*known.field = true;
        }
        rest = end == WStringView::npos ? WStringView() : rest.substr(end + 1);
    }
    return options;
}
