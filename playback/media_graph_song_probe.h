// A look at a file before an engine gets it: what kind of song it is, if any. An engine would search the whole file for
// a first frame, for minutes where it is full of half-valid sync words. Knows no engine.
#pragma once

#include <filesystem>

namespace cardsong::playback {

enum class SongKind { None, Mpeg, Asf };

// None also when the file is missing, empty or no ordinary file. MPEG audio is known by a run of frames, which has to
// begin within a megabyte after the tags; ASF by a whole header and a whole first packet. The name is not looked at.
SongKind LookAtSong(const std::filesystem::path& hostPath);

} // namespace cardsong::playback
