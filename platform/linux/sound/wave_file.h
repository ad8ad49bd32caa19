// A wave file (RIFF WAVE: Microsoft/IBM Multimedia Programming Interface 1.0, WAVEFORMATEXTENSIBLE) as samples. Knows
// no file and no player.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace cardsong::sound {

enum class SampleKind { Integer, Float };

struct WaveSound {
    SampleKind kind = SampleKind::Integer; // 8 bits are unsigned, more are signed; little-endian
    unsigned bitsPerSample = 0;            // 8, 16, 24 or 32; of floats 32 or 64
    unsigned channels = 0;                 // 1 or 2
    unsigned samplesPerSecond = 0;
    std::span<const std::byte> samples; // whole frames of all channels, inside the file

    std::size_t FrameBytes() const { return std::size_t{ channels } * bitsPerSample / 8; }
};

// `file`: the whole file, borrowed as long as the samples are used. Sizes that reach past the end of the file are taken
// for that end. Nothing when it is no wave file, holds not one frame, or holds it compressed, in more than two channels
// or at a speed that no sound has.
std::optional<WaveSound> ReadWave(std::span<const std::byte> file);

} // namespace cardsong::sound
