#include "playback/asf_song.h"

#include "tags/asf_ids.h"

#include <algorithm>

namespace cardsong::playback {

namespace {

// Objects of ASF 01.20.03, sections 10.1 to 10.4 and 10.16: what stands where in them.
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
    if (IsAt(kAsfFileProperties, object) && object.size() >= kPropertiesBytes && header.packetBytes == 0) {
        header.packetBytes = LittleEndianAt(object, kPacketBytesAt, 4);
        header.song.seconds = SecondsOf(object);
    }
    if (IsAt(kAsfStreamProperties, object) && IsAt(kAsfAudioMedia, object, kObjectBytes))
        header.hasSound = true;
    for (const AsfId& id : kAsfEncryptions) {
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
    return IsAt(kAsfHeader, file.At(0, kAsfHeader.size()));
}

std::optional<AsfSong> ReadAsfSong(SongFile& file)
{
    const Bytes start = file.At(0, kObjectBytes);
    const std::uint64_t headerEnd = IsAsf(file) && start.size() == kObjectBytes ? LittleEndianAt(start, 16, 8) : 0;
    if (headerEnd < kHeaderBytes || headerEnd >= file.SizeBytes() || !IsAt(kAsfData, file.At(headerEnd, kObjectBytes)))
        return std::nullopt;
    const Header header = ReadObjects(file, headerEnd);
    if (header.packetBytes == 0 || !header.hasSound || file.SizeBytes() - headerEnd < kDataBytes + header.packetBytes)
        return std::nullopt;
    return header.song;
}

} // namespace cardsong::playback
