// Songs of a length that a test chooses.
#pragma once

#include "tests/tags/bytes.h"

#include <string>

namespace cardsong::test {

// An MP3 song of 128 kbit/s: so many frames of 26.12 ms, of which only the first has a header.
inline std::string SongOfFrames(std::size_t frames)
{
    constexpr std::size_t kTagBytes = 128; // the length leaves them out, with a tag there or without
    constexpr std::size_t kFrameBytes = 417;
    std::string song = SampleText("mp3/cbr_joint_stereo.mp3").substr(0, kFrameBytes);
    song.resize(kTagBytes + kFrameBytes * frames);
    return song;
}

// 10.4 s.
inline std::string SongOfTenSeconds()
{
    return SongOfFrames(400);
}

} // namespace cardsong::test
