#include "playback/media_graph_song_probe.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <vector>

namespace cardsong::playback {

namespace {

using Bytes = std::span<const unsigned char>;

// Objects of ASF 01.20.03, sections 10.1 and 10.2: their identifiers, and what stands where in them.
using AsfId = std::array<unsigned char, 16>;
constexpr AsfId kAsfHeader = { 0x30, 0x26, 0xB2, 0x75, 0x8E, 0x66, 0xCF, 0x11,
                               0xA6, 0xD9, 0x00, 0xAA, 0x00, 0x62, 0xCE, 0x6C };
constexpr AsfId kAsfData = { 0x36, 0x26, 0xB2, 0x75, 0x8E, 0x66, 0xCF, 0x11,
                             0xA6, 0xD9, 0x00, 0xAA, 0x00, 0x62, 0xCE, 0x6C };
constexpr AsfId kAsfFileProperties = { 0xA1, 0xDC, 0xAB, 0x8C, 0x47, 0xA9, 0xCF, 0x11,
                                       0x8E, 0xE4, 0x00, 0xC0, 0x0C, 0x20, 0x53, 0x65 };
constexpr std::size_t kAsfObjectBytes = 24; // identifier and size
constexpr std::size_t kAsfHeaderBytes = 30;
constexpr std::size_t kAsfPacketSizeAt = 92;
constexpr std::size_t kAsfDataBytes = 50;
constexpr int kMostAsfObjects = 1000;

// First a look that is enough for nearly every song, then the one that is as far as we go.
constexpr std::size_t kReaches[] = { 16 * 1024, 1024 * 1024 };
constexpr int kMostTags = 8;
constexpr std::size_t kTagHeaderBytes = 10;
constexpr std::size_t kHeaderBytes = 4;

// Kilobits a second by index 1 to 14: layers I, II and III of MPEG-1, then layer I and layers II and III of MPEG-2.
constexpr unsigned kBitRates[5][14] = {
    { 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448 },
    { 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384 },
    { 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320 },
    { 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256 },
    { 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160 },
};
constexpr unsigned kSampleRates[3] = { 44100, 48000, 32000 }; // of MPEG-1

std::uint32_t WordAt(Bytes bytes, std::size_t at)
{
    return static_cast<std::uint32_t>(bytes[at]) << 24 | static_cast<std::uint32_t>(bytes[at + 1]) << 16 |
           static_cast<std::uint32_t>(bytes[at + 2]) << 8 | bytes[at + 3];
}

// 0 when the word is no frame header. Frames of a free bit rate do not tell their length and are not known here.
std::size_t FrameBytes(std::uint32_t header)
{
    const unsigned version = header >> 19 & 3; // 3: MPEG-1, 2: MPEG-2, 0: MPEG-2.5
    const unsigned layer = 4 - (header >> 17 & 3);
    const unsigned bitRateIndex = header >> 12 & 15, sampleRateIndex = header >> 10 & 3;
    if (header >> 21 != 0x7FF || version == 1 || layer == 4 || bitRateIndex == 0 || bitRateIndex == 15 ||
        sampleRateIndex == 3)
        return 0;
    const bool isFirstVersion = version == 3;
    const unsigned row = isFirstVersion ? layer - 1 : layer == 1 ? 3 : 4;
    const unsigned bitsPerSecond = kBitRates[row][bitRateIndex - 1] * 1000;
    const unsigned samplesPerSecond = kSampleRates[sampleRateIndex] >> (isFirstVersion ? 0 : version == 2 ? 1 : 2);
    const unsigned padding = header >> 9 & 1;
    if (layer == 1)
        return (12 * bitsPerSecond / samplesPerSecond + padding) * 4;
    return (layer == 3 && !isFirstVersion ? 72 : 144) * bitsPerSecond / samplesPerSecond + padding;
}

// Version, layer and sample rate stay the same throughout a song.
bool FollowsOn(std::uint32_t header, std::uint32_t next)
{
    constexpr std::uint32_t kLasting = 0xFFFE0C00;
    return (header & kLasting) == (next & kLasting);
}

std::vector<unsigned char> ReadAt(std::ifstream& file, std::uint64_t offset, std::size_t most)
{
    std::vector<unsigned char> bytes(most);
    file.clear();
    file.seekg(static_cast<std::streamoff>(offset));
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(most));
    bytes.resize(static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    return bytes;
}

// ID3v2: "ID3", two bytes of version, flags, and the size of the rest in four groups of seven bits. A tag that claims
// to reach past the end is looked into like anything else.
std::uint64_t SkipTags(std::ifstream& file, std::uint64_t fileBytes)
{
    std::uint64_t offset = 0;
    for (int tag = 0; tag < kMostTags; ++tag) {
        const auto head = ReadAt(file, offset, kTagHeaderBytes);
        if (head.size() < kTagHeaderBytes || head[0] != 'I' || head[1] != 'D' || head[2] != '3')
            break;
        std::uint64_t end = 0;
        for (std::size_t i = 6; i < kTagHeaderBytes; ++i)
            end = end << 7 | (head[i] & 0x7FU);
        end += offset + kTagHeaderBytes;
        if (end >= fileBytes)
            break;
        offset = end;
    }
    return offset;
}

std::uint64_t LittleEndianAt(Bytes bytes, std::size_t at, std::size_t count)
{
    std::uint64_t value = 0;
    for (std::size_t i = count; i > 0; --i)
        value = value << 8 | bytes[at + i - 1];
    return value;
}

bool Is(const AsfId& id, Bytes object)
{
    return object.size() >= kAsfObjectBytes && std::equal(id.begin(), id.end(), object.begin());
}

// 0 when no object inside the header says it.
std::uint64_t AsfPacketBytes(std::ifstream& file, std::uint64_t headerEnd)
{
    std::uint64_t offset = kAsfHeaderBytes;
    for (int i = 0; i < kMostAsfObjects && offset < headerEnd; ++i) {
        const auto object = ReadAt(file, offset, kAsfPacketSizeAt + 4);
        if (Is(kAsfFileProperties, object) && object.size() == kAsfPacketSizeAt + 4)
            return LittleEndianAt(object, kAsfPacketSizeAt, 4);
        const std::uint64_t size = object.size() < kAsfObjectBytes ? 0 : LittleEndianAt(object, 16, 8);
        if (size < kAsfObjectBytes || size > headerEnd - offset)
            return 0;
        offset += size;
    }
    return 0;
}

bool HoldsAsfPacket(std::ifstream& file, std::uint64_t fileBytes)
{
    const auto header = ReadAt(file, 0, kAsfObjectBytes);
    const std::uint64_t headerEnd = Is(kAsfHeader, header) ? LittleEndianAt(header, 16, 8) : 0;
    if (headerEnd < kAsfHeaderBytes || headerEnd >= fileBytes ||
        !Is(kAsfData, ReadAt(file, headerEnd, kAsfObjectBytes)))
        return false;
    const std::uint64_t packetBytes = AsfPacketBytes(file, headerEnd);
    return packetBytes > 0 && fileBytes - headerEnd >= kAsfDataBytes + packetBytes;
}

} // namespace

bool HoldsMpegFrame(Bytes bytes, bool isWhole)
{
    for (std::size_t at = 0; at + kHeaderBytes <= bytes.size(); ++at) {
        if (bytes[at] != 0xFF)
            continue;
        const std::uint32_t header = WordAt(bytes, at);
        const std::size_t frameBytes = FrameBytes(header);
        if (frameBytes == 0)
            continue;
        const std::size_t next = at + frameBytes;
        if (next + kHeaderBytes > bytes.size() ? isWhole && next <= bytes.size()
                                               : FollowsOn(header, WordAt(bytes, next)))
            return true;
    }
    return false;
}

SongKind LookAtSong(const std::filesystem::path& hostPath)
{
    std::error_code failed;
    // Opening a pipe or a device could wait for ever.
    if (!std::filesystem::is_regular_file(hostPath, failed))
        return SongKind::None;
    const std::uint64_t fileBytes = std::filesystem::file_size(hostPath, failed);
    std::ifstream file(hostPath, std::ios::binary);
    if (failed || !file)
        return SongKind::None;
    const auto first = ReadAt(file, 0, kAsfHeader.size());
    if (std::equal(first.begin(), first.end(), kAsfHeader.begin(), kAsfHeader.end()))
        return HoldsAsfPacket(file, fileBytes) ? SongKind::Asf : SongKind::None;
    const std::uint64_t start = SkipTags(file, fileBytes);
    for (const std::size_t reach : kReaches) {
        const auto bytes = ReadAt(file, start, reach);
        if (HoldsMpegFrame(bytes, bytes.size() < reach))
            return SongKind::Mpeg;
    }
    return SongKind::None;
}

} // namespace cardsong::playback
