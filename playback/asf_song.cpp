#include "playback/asf_song.h"

#include <algorithm>
#include <array>

namespace cardsong::playback {

namespace {

// Objects of ASF 01.20.03, sections 10.1 to 10.4 and 10.16: their identifiers, and what stands where in them.
using AsfId = std::array<unsigned char, 16>;
constexpr AsfId kHeader = { 0x30, 0x26, 0xB2, 0x75, 0x8E, 0x66, 0xCF, 0x11,
                            0xA6, 0xD9, 0x00, 0xAA, 0x00, 0x62, 0xCE, 0x6C };
constexpr AsfId kData = {
    0x36, 0x26, 0xB2, 0x75, 0x8E, 0x66, 0xCF, 0x11, 0xA6, 0xD9, 0x00, 0xAA, 0x00, 0x62, 0xCE, 0x6C
};
constexpr AsfId kFileProperties = { 0xA1, 0xDC, 0xAB, 0x8C, 0x47, 0xA9, 0xCF, 0x11,
                                    0x8E, 0xE4, 0x00, 0xC0, 0x0C, 0x20, 0x53, 0x65 };
constexpr AsfId kStreamProperties = { 0x91, 0x07, 0xDC, 0xB7, 0xB7, 0xA9, 0xCF, 0x11,
                                      0x8E, 0xE6, 0x00, 0xC0, 0x0C, 0x20, 0x53, 0x65 };
constexpr AsfId kAudioMedia = { 0x40, 0x9E, 0x69, 0xF8, 0x4D, 0x5B, 0xCF, 0x11,
                                0xA8, 0xFD, 0x00, 0x80, 0x5F, 0x5C, 0x44, 0x2B };
constexpr AsfId kEncryptions[] = {
    { 0xFB, 0xB3, 0x11, 0x22, 0x23, 0xBD, 0xD2, 0x11, 0xB4, 0xB7, 0x00, 0xA0, 0xC9, 0x55, 0xFC, 0x6E },
    { 0x14, 0xE6, 0x8A, 0x29, 0x22, 0x26, 0x17, 0x4C, 0xB9, 0x35, 0xDA, 0xE0, 0x7E, 0xE9, 0x28, 0x9C },
    { 0x33, 0x85, 0x05, 0x43, 0x81, 0x69, 0xE6, 0x49, 0x9B, 0x74, 0xAD, 0x12, 0xCB, 0x86, 0xD5, 0x8C },
};
constexpr std::size_t kObjectBytes = 24; // identifier and size
constexpr std::size_t kHeaderBytes = 30;
constexpr std::size_t kDataBytes = 50;
constexpr int kMostObjects = 1000;

// In the file properties.
constexpr std::size_t kPlayDurationAt = 64; // in units of 100 ns
constexpr std::size_t kPrerollAt = 80;      // in milliseconds
constexpr std::size_t kFlagsAt = 88;
constexpr std::size_t kPacketBytesAt = 92;
constexpr std::size_t kPropertiesBytes = 96;
constexpr std::uint64_t kIsBroadcast = 1;

std::uint64_t LittleEndianAt(Bytes bytes, std::size_t at, std::size_t count)
{
    std::uint64_t value = 0;
    for (std::size_t i = count; i > 0; --i)
        value = value << 8 | bytes[at + i - 1];
    return value;
}

bool IsAt(const AsfId& id, Bytes object, std::size_t at = 0)
{
    return object.size() >= at + id.size() &&
           std::equal(id.begin(), id.end(), object.begin() + static_cast<std::ptrdiff_t>(at));
}

// What the objects of the header tell.
struct Header {
    std::uint64_t packetBytes = 0;
    bool hasSound = false;
    AsfSong song;
};

std::optional<double> SecondsOf(Bytes properties)
{
    if ((LittleEndianAt(properties, kFlagsAt, 4) & kIsBroadcast) != 0)
        return std::nullopt;
    const double seconds = static_cast<double>(LittleEndianAt(properties, kPlayDurationAt, 8)) / 1e7 -
                           static_cast<double>(LittleEndianAt(properties, kPrerollAt, 8)) / 1e3;
    return seconds > 0.0 ? std::optional(seconds) : std::nullopt;
}

void TakeObject(Header& header, Bytes object)
{
    if (IsAt(kFileProperties, object) && object.size() >= kPropertiesBytes && header.packetBytes == 0) {
        header.packetBytes = LittleEndianAt(object, kPacketBytesAt, 4);
        header.song.seconds = SecondsOf(object);
    }
    if (IsAt(kStreamProperties, object) && IsAt(kAudioMedia, object, kObjectBytes))
        header.hasSound = true;
    for (const AsfId& id : kEncryptions) {
        if (IsAt(id, object))
            header.song.isProtected = true;
    }
}

Header ReadObjects(SongFile& file, std::uint64_t headerEnd)
{
    Header header;
    std::uint64_t offset = kHeaderBytes;
    for (int i = 0; i < kMostObjects && offset < headerEnd; ++i) {
        const Bytes object = file.At(offset, kPropertiesBytes);
        const std::uint64_t size = object.size() < kObjectBytes ? 0 : LittleEndianAt(object, 16, 8);
        TakeObject(header, object);
        if (size < kObjectBytes || size > headerEnd - offset)
            break;
        offset += size;
    }
    return header;
}

} // namespace

bool IsAsf(SongFile& file)
{
    return IsAt(kHeader, file.At(0, kHeader.size()));
}

std::optional<AsfSong> ReadAsfSong(SongFile& file)
{
    const Bytes start = file.At(0, kObjectBytes);
    const std::uint64_t headerEnd = IsAsf(file) && start.size() == kObjectBytes ? LittleEndianAt(start, 16, 8) : 0;
    if (headerEnd < kHeaderBytes || headerEnd >= file.SizeBytes() || !IsAt(kData, file.At(headerEnd, kObjectBytes)))
        return std::nullopt;
    const Header header = ReadObjects(file, headerEnd);
    if (header.packetBytes == 0 || !header.hasSound || file.SizeBytes() - headerEnd < kDataBytes + header.packetBytes)
        return std::nullopt;
    return header.song;
}

} // namespace cardsong::playback
