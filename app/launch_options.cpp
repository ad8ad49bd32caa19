#include "app/launch_options.h"

LaunchOptions g_launchOptions;

LaunchOptions ReadLaunchOptions(const WCHAR* commandLine)
{
    LaunchOptions options;
    if (commandLine == nullptr)
        return options;
    WStringView rest(commandLine);
    while (!rest.empty()) {
        const auto end = rest.find(TEXT(' '));
        const auto word = rest.substr(0, end);
        if (word == TEXT("--fill"))
            options.fillFromCard = true;
        else if (word == TEXT("--report"))
            options.report = true;
        rest = end == WStringView::npos ? WStringView() : rest.substr(end + 1);
    }
    return options;
}
