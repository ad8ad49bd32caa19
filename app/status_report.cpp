#include "app/status_report.h"

#include "app/launch_options.h"
#include "app/player_state.h"
#include "app/title_ticker.h"

void ReportProgress()
{
    if (g_launchOptions.report && IsSongLoaded())
        NKDbgPrintfW(TEXT("%s  %s of %s\n"), g_titleText.c_str(), g_elapsedText.c_str(), g_totalText.c_str());
}

void ReportLyricsLine(std::int32_t line, std::int32_t positionMs)
{
    if (g_launchOptions.report && IsSongLoaded())
        NKDbgPrintfW(TEXT("%s  lyrics line %d at %d ms\n"), g_titleText.c_str(), line, positionMs);
}
