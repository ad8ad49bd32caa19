// Tells the debug output what plays, for a player that nobody can see.
#pragma once

#include <cstdint>

// Writes title, elapsed and total time, when the start asked for reports and a song is loaded.
void ReportProgress();
// In the same way, that the lyrics have come to line `line` (-1: none) with the song at `positionMs`.
void ReportLyricsLine(std::int32_t line, std::int32_t positionMs);
