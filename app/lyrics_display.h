// The lyrics of the song that plays: found when it begins, shown while it sounds.
#pragma once

#include "platform/ce.h"

#include <cstdint>

class LyricsContext;
class LyricsStrip;

constexpr UINT kLyricsPeriodMs = 100;

extern std::int32_t g_lyricsShown; // 1 while a song is loaded that has lyrics
extern UINT_PTR g_lyricsTimer;     // runs while the strip is shown; 0: it does not

// With the main window they begin and end.
void StartLyrics();
void EndLyrics();
// Null before the start and after the end.
[[nodiscard]] LyricsContext* Lyrics();
[[nodiscard]] LyricsStrip* LyricsOnScreen();

// Looks for the lyrics of the song at `path`, shows those that it finds, and keeps them in step from then on. Looking
// may take its time on a slow card: the song sounds already.
void FindLyrics(HWND window, const WString& path);
// The strip of a song that has lyrics comes back where the song is; of another song nothing.
void ShowLyrics(HWND window);
// The strip goes until the lyrics are shown again.
void PauseLyrics(HWND window);
// The strip goes with the song.
void StopLyrics(HWND window);
// One tick.
void RefreshLyrics();
// Another program has changed the settings of the lyrics.
void TakeLyricsSettings();
