// Wave files for tests, byte by byte.
#pragma once

#include <cmath>
#include <cstdint>
#include <string>

namespace cardsong::test {

inline std::string LittleEndian(std::uint32_t number, int bytes)
{
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text.push_back(static_cast<char>(number >> (8 * i)));
    return text;
}

inline std::string Chunk(const std::string& tag, const std::string& contents)
{
    std::string chunk = tag + LittleEndian(static_cast<std::uint32_t>(contents.size()), 4) + contents;
    if (contents.size() % 2 != 0)
        chunk.push_back('\0');
    return chunk;
}

struct WaveOptions {
    unsigned tag = 1; // integer samples
    unsigned channels = 1;
    unsigned rate = 8000;
    unsigned bits = 16;
};

inline std::string FormatChunk(const WaveOptions& options = {})
{
    const unsigned frameBytes = options.channels * options.bits / 8;
    return Chunk("fmt ", LittleEndian(options.tag, 2) + LittleEndian(options.channels, 2) +
                             LittleEndian(options.rate, 4) + LittleEndian(options.rate * frameBytes, 4) +
                             LittleEndian(frameBytes, 2) + LittleEndian(options.bits, 2));
}

inline std::string Riff(const std::string& chunks)
{
    return "RIFF" + LittleEndian(static_cast<std::uint32_t>(4 + chunks.size()), 4) + "WAVE" + chunks;
}

inline std::string Wave(const std::string& samples, const WaveOptions& options = {})
{
    return Riff(FormatChunk(options) + Chunk("data", samples));
}

// 16 bits, one channel.
inline std::string Tone(double hz, double seconds, unsigned rate = 8000)
{
    std::string samples;
    const auto count = static_cast<int>(seconds * rate);
    for (int i = 0; i < count; ++i) {
        const double phase = 2 * 3.14159265358979 * hz * i / rate;
        samples += LittleEndian(static_cast<std::uint32_t>(std::lround(8000 * std::sin(phase))), 2);
    }
    return Wave(samples, { .rate = rate });
}

} // namespace cardsong::test
