// The first frame of many MPEG audio songs holds no sound but says how long the song is. Knows no other frame.
#pragma once

#include "playback/mpeg_header.h"
#include "playback/song_file.h"

namespace cardsong::playback {

// 0: not said.
struct MpegInfo {
    std::uint32_t frames = 0; // without this one
    std::uint32_t bytes = 0;  // of the whole song, this frame included
};

// From a "Xing" or "Info" header behind the side information, or a "VBRI" header at its fixed place. Nothing when
// `frame`, of Layer III, holds neither: it is sound then.
std::optional<MpegInfo> ReadMpegInfo(Bytes frame, const MpegHeader& header);

} // namespace cardsong::playback
