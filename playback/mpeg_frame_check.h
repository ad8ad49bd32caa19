// Tells an MPEG audio frame from bytes that only begin like one: every few thousand bytes of a program do.
#pragma once

#include "playback/mpeg_header.h"
#include "playback/song_file.h"

namespace cardsong::playback {

// As much of a frame as is looked at.
inline constexpr std::size_t kCheckedFrameBytes = 72;

// Whether an encoder could have written `start`, the first bytes of a frame with this header: `word` and what it says,
// of which frameBytes is not 0. Layer I has no forbidden allocation, Layer II no forbidden pairing of rate and mode,
// and in Layer III the parts of the side information fit the frame (ISO/IEC 11172-3, 2.4.2; 13818-3).
bool CouldBeEncoded(std::uint32_t word, const MpegHeader& header, Bytes start);

} // namespace cardsong::playback
