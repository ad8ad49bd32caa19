// MPEG audio frames made byte by byte, and a file to put them into.
#pragma once

#include "playback/mpeg_song.h"

#include "tests/platform/scratch_device.h"

#include <array>
#include <numeric>
#include <string>

namespace cardsong::test {

using FrameHeader = std::array<unsigned char, 4>;

struct FrameKind {
    const char* name;
    FrameHeader header;
    std::size_t frameBytes;
    double frameMs;
};

// Lengths worked out by hand from the bit rate and the sample rate in each header.
constexpr FrameKind kMpeg1Layer3 = {
    "MPEG-1 layer III, 128 kb/s, 44.1 kHz", { 0xFF, 0xFB, 0x90, 0x00 }, 417, 1152 / 44.1
};
constexpr FrameKind kMpeg1Padded = { "the same with padding", { 0xFF, 0xFB, 0x92, 0x00 }, 418, 1152 / 44.1 };
constexpr FrameKind kMpeg1At64 = { "the same at 64 kb/s", { 0xFF, 0xFB, 0x50, 0x00 }, 208, 1152 / 44.1 };
constexpr FrameKind kMpeg1Mono = { "the same in mono", { 0xFF, 0xFB, 0x90, 0xC0 }, 417, 1152 / 44.1 };
constexpr FrameKind kFrameKinds[] = {
    kMpeg1Layer3,
    kMpeg1Padded,
    kMpeg1At64,
    kMpeg1Mono,
    { "MPEG-1 layer III, 320 kb/s, 48 kHz", { 0xFF, 0xFB, 0xE4, 0x00 }, 960, 24.0 },
    { "MPEG-1 layer II, 192 kb/s, 32 kHz", { 0xFF, 0xFD, 0xA8, 0x00 }, 864, 36.0 },
    { "MPEG-1 layer I, 384 kb/s, 44.1 kHz", { 0xFF, 0xFF, 0xC0, 0x00 }, 416, 384 / 44.1 },
    { "MPEG-2 layer III, 32 kb/s, 22.05 kHz", { 0xFF, 0xF3, 0x40, 0x00 }, 104, 576 / 22.05 },
    { "MPEG-2.5 layer III, 8 kb/s, 8 kHz", { 0xFF, 0xE3, 0x18, 0x00 }, 72, 72.0 },
};

inline std::uint32_t WordOf(const FrameHeader& header)
{
    return std::accumulate(header.begin(), header.end(), std::uint32_t{ 0 },
                           [](std::uint32_t word, unsigned char byte) { return word << 8 | byte; });
}

// A silent frame: what follows its header is all zero.
inline std::string Frame(const FrameKind& kind)
{
    std::string frame(kind.frameBytes, '\0');
    std::copy(kind.header.begin(), kind.header.end(), frame.begin());
    return frame;
}

inline std::string Frames(const FrameKind& kind, std::size_t count)
{
    std::string frames;
    for (std::size_t i = 0; i < count; ++i)
        frames += Frame(kind);
    return frames;
}

// `value` in `count` bytes, the highest first.
inline std::string BigEndian(std::uint64_t value, int count)
{
    std::string bytes;
    for (int i = count - 1; i >= 0; --i)
        bytes += static_cast<char>(value >> 8 * i & 0xFF);
    return bytes;
}

inline std::string LittleEndian(std::uint64_t value, int count)
{
    const std::string bytes = BigEndian(value, count);
    return { bytes.rbegin(), bytes.rend() };
}

// ID3v2.3 of `bodyBytes` after its header.
inline std::string Id3Tag(std::size_t bodyBytes, char fill = '\0')
{
    std::string size;
    for (int shift = 21; shift >= 0; shift -= 7)
        size += static_cast<char>(bodyBytes >> shift & 0x7F);
    return std::string("ID3\x03\0\0", 6) + size + std::string(bodyBytes, fill);
}

class SongFileTest {
public:
    std::filesystem::path Path() const { return m_device.CardDirectory() + "/song"; }
    std::filesystem::path Write(const std::string& bytes)
    {
        m_device.WriteFile("card/song", bytes);
        return Path();
    }
    std::unique_ptr<playback::SongFile> Open(const std::string& bytes)
    {
        return playback::SongFile::Open(Write(bytes));
    }
    std::unique_ptr<playback::MpegSong> OpenSong(const std::string& bytes)
    {
        return playback::MpegSong::Open(Open(bytes));
    }

private:
    ScratchDevice m_device;
};

} // namespace cardsong::test
