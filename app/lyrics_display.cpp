#include "app/lyrics_display.h"

#include "app/command_ids.h"
#include "app/interruption.h"
#include "app/launch_options.h"
#include "app/status_report.h"
#include "lyrics/lyrics_strip.h"

#include <algorithm>
#include <limits>

std::int32_t g_lyricsShown;
UINT_PTR g_lyricsTimer;

namespace {

struct LyricsDisplayParts {
    LyricsContext context;
    LyricsStrip strip{ context };
};
std::unique_ptr<LyricsDisplayParts> g_parts;

std::int32_t PositionMs()
{
    constexpr double kMostMs = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(ShownPosition() * 1000, -kMostMs, kMostMs));
}

// A hidden strip needs no ticks.
void EndTimer(HWND window)
{
    if (g_lyricsTimer != 0)
        KillTimer(window, g_lyricsTimer);
    g_lyricsTimer = 0;
}

} // namespace

void StartLyrics()
{
    g_parts = std::make_unique<LyricsDisplayParts>();
    if (g_launchOptions.lyricsUtf8)
        g_parts->context.SetUtf8Detection(Utf8Detection::On);
}

void EndLyrics()
{
    g_parts.reset();
}

LyricsContext* Lyrics()
{
    return g_parts ? &g_parts->context : nullptr;
}

LyricsStrip* LyricsOnScreen()
{
    return g_parts ? &g_parts->strip : nullptr;
}

void FindLyrics(HWND window, const WString& path)
{
    StopLyrics(window);
    if (!g_parts)
        return;
    g_lyricsShown = g_parts->context.FindForSong(path.c_str());
    ShowLyrics(window);
}

void ShowLyrics(HWND window)
{
    if (!g_parts || g_lyricsShown == 0)
        return;
    g_parts->strip.Show(window);
    if (g_lyricsTimer == 0)
        g_lyricsTimer = SetTimer(window, kLyricsTimer, kLyricsPeriodMs, nullptr);
}

void PauseLyrics(HWND window)
{
    EndTimer(window);
    if (g_parts)
        g_parts->strip.Pause();
}

void StopLyrics(HWND window)
{
    EndTimer(window);
    g_lyricsShown = 0;
    if (g_parts)
        g_parts->strip.Stop();
}

void RefreshLyrics()
{
    if (!g_parts)
        return;
    LyricsStrip& strip = g_parts->strip;
    const std::int32_t lineBefore = strip.CurrentLine();
    const std::int32_t positionMs = PositionMs();
    strip.Update(positionMs);
    if (strip.CurrentLine() != lineBefore)
        ReportLyricsLine(strip.CurrentLine(), positionMs);
}

void TakeLyricsSettings()
{
    if (g_parts)
        g_parts->strip.ReloadSettings();
}
