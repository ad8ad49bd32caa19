// Reads files of lyrics whole.
#pragma once

#include "lyrics/lyrics_text.h"

// The bytes of the file at `path` with a zero behind them. Nothing when it cannot be opened, or has more than
// kMostLyricsBytes, which counts as the same.
std::optional<LyricsBytes> ReadLyricsFile(const WCHAR* path);
