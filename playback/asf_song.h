// What the header of an ASF file (Windows Media Audio) says of the song in it. Knows no decoder.
#pragma once

#include "playback/song_file.h"

#include <optional>

namespace cardsong::playback {

struct AsfSong {
    std::optional<double> seconds; // nothing when the header does not say: a recording of a broadcast
    bool isProtected = false;      // by a licence that no machine of ours holds
};

// Whether the file's first bytes are those of an ASF file.
bool IsAsf(SongFile& file);

// Nothing unless the header is whole, names a stream of sound, and a whole first packet follows it.
std::optional<AsfSong> ReadAsfSong(SongFile& file);

} // namespace cardsong::playback
