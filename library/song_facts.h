// What a song file tells of itself: how long it plays and what it is called.
#pragma once

#include "library/song_format.h"
#include "platform/ce.h"

#include <cstdint>

// The play time of a song of the device, as the lists show it; 0 when it cannot be told. A WMA song of 429 s and more
// wraps: its time is kept in 32 bits of 100 ns.
std::uint32_t ReadSongDurationSeconds(const WCHAR* path, bool isMp3);

// What a person asks of a song. It holds more titles than the player shows: ID3v2 and plain ASCII ones too.
struct SongFacts {
    std::uint64_t lengthMs = 0; // 0: cannot be told
    WString title;              // empty: none
};

// Of an MP3 song the ID3v2 title, else the ID3v1 title, whose code page is guessed; of a WMA song its ASF title.
// `path`: of the device. A file that cannot be read has neither length nor title.
SongFacts ReadSongFacts(const WCHAR* path, SongFormat format);
