// What a person asks of a song: how long it plays and what it is called. It reads more titles than the player shows:
// ID3v2 and plain ASCII ones too.
#pragma once

#include "platform/ce.h"

#include <cstdint>

struct SongFacts {
    std::uint64_t lengthMs = 0; // 0: cannot be told
    WString title;              // empty: none
};

// Of an MP3 song the ID3v2 title, else the ID3v1 title, whose code page is guessed; of a WMA song its ASF title.
// `path`: of the device. A file that cannot be read has neither length nor title.
SongFacts ReadSongFacts(const WCHAR* path, bool isMp3);
