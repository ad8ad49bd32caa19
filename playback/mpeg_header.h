// What the four bytes in front of an MPEG audio frame say (ISO/IEC 11172-3, 13818-3; MPEG-2.5 as encoders extend it),
// for every layer. The tags' reader has a stricter one with the device's own bit rates. Those must not cut a song that
// is played.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace cardsong::playback {

inline constexpr std::size_t kMpegHeaderBytes = 4;

struct MpegHeader {
    unsigned layer = 0;          // 1 to 3
    bool isFirstVersion = false; // MPEG-1; else 2 or 2.5
    unsigned bitsPerSecond = 0;  // 0: a free bit rate, which the header does not tell
    unsigned samplesPerSecond = 0;
    unsigned samples = 0; // of each channel, in one frame
    unsigned channels = 0;
    unsigned paddingBytes = 0;
    std::size_t frameBytes = 0; // header and padding included; 0 with a free bit rate

    double Seconds() const { return static_cast<double>(samples) / samplesPerSecond; }
};

// Nothing when the word, its first byte on top, is no frame header.
std::optional<MpegHeader> ParseMpegHeader(std::uint32_t word);

// Version, layer and sample rate stay the same throughout a song; so does whether the bit rate is free.
bool IsOfOneKind(std::uint32_t word, std::uint32_t other);

} // namespace cardsong::playback
