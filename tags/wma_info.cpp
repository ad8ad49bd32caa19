#include "tags/wma_info.h"

#include "common/file_stream.h"
#include "tags/asf_ids.h"
#include "tags/file_source.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace {

constexpr std::size_t kObjectHeaderBytes = 24;
constexpr std::uint64_t kMostObjectBytes = 1024; // larger ones are deliberately not skipped
constexpr std::size_t kHeaderObjectBytes = 30;
constexpr std::size_t kDataObjectStartBytes = 26; // file identifier, packet count, reserved
constexpr int kMostObjects = 4096;                // a file of nothing but empty objects ends here

AsfId TakeId(ByteReader& reader)
{
    AsfId id = {};
    std::ranges::transform(reader.Take(id.size()), id.begin(),
                           [](std::byte digit) { return std::to_integer<std::uint8_t>(digit); });
    return id;
}

// A field that the object does not hold whole keeps its value.
void ReadField(ByteReader& object, std::uint32_t& field)
{
    const std::uint32_t value = object.U32Le();
    if (object.Ok())
        field = value;
}

void ReadField(ByteReader& object, std::uint64_t& field)
{
    const std::uint64_t value = object.U64Le();
    if (object.Ok())
        field = value;
}

void SetDuration(WmaInfo& info)
{
    constexpr std::uint32_t kBroadcast = 1;
    constexpr std::uint64_t kUnitsPerMs = 10'000;
    const bool isBroadcast = (info.flags & kBroadcast) != 0;
    info.duration = isBroadcast ? 0 : static_cast<std::int64_t>(info.playDuration - info.prerollMsLow * kUnitsPerMs);
}

bool ReadFileProperties(ByteReader object, WmaInfo& info)
{
    const AsfId fileId = TakeId(object);
    if (object.Ok())
        std::memcpy(info.fileId, fileId.data(), fileId.size());
    ReadField(object, info.fileBytes);
    ReadField(object, info.creationDate);
    ReadField(object, info.dataPackets);
    ReadField(object, info.playDuration);
    ReadField(object, info.sendDuration);
    ReadField(object, info.prerollMsLow);
    ReadField(object, info.prerollMsHigh);
    ReadField(object, info.flags);
    if (object.Ok())
        SetDuration(info); // its parts have been read
    ReadField(object, info.leastPacketBytes);
    ReadField(object, info.mostPacketBytes);
    ReadField(object, info.mostBitRate);
    return object.Ok();
}

// Takes the bytes of an attribute whole, and keeps the units in them.
void ReadText(ByteReader& object, std::size_t byteLength, std::span<WCHAR> out)
{
    ByteReader text(object.Take(byteLength));
    ReadUtf16Field(text, text.RestBytes(), out);
}

bool ReadContentDescription(ByteReader object, WmaInfo& info)
{
    const std::size_t titleBytes = object.U16Le();
    const std::size_t authorBytes = object.U16Le();
    const std::size_t rightsBytes = object.U16Le();
    const std::size_t descriptionBytes = object.U16Le();
    const std::size_t ratingBytes = object.U16Le();
    if (titleBytes + authorBytes + rightsBytes + descriptionBytes + ratingBytes > object.RestBytes())
        return false;
    ReadText(object, titleBytes, info.title);
    ReadText(object, authorBytes, info.author);
    ReadText(object, rightsBytes, info.rights);
    ReadText(object, descriptionBytes, info.description);
    return true;
}

// The number in a descriptor's value; 0 for texts, byte arrays and types that are not known.
std::uint32_t Number(std::uint16_t type, ByteReader value)
{
    enum ValueType : std::uint16_t { kBool = 2, kDword = 3, kQword = 4, kWord = 5 };
    switch (type) {
    case kBool:
    case kDword: return value.U32Le();
    case kQword: return static_cast<std::uint32_t>(value.U64Le());
    case kWord: return value.U16Le();
    default: return 0;
    }
}

bool ReadDescriptor(ByteReader& object, WmaInfo& info)
{
    constexpr std::uint16_t kByteArray = 1; // 0 is a text, and both are read as one
    std::array<WCHAR, kMostObjectBytes / 2> name;
    ReadText(object, object.U16Le(), name);
    const std::uint16_t type = object.U16Le();
    ByteReader value(object.Take(object.U16Le()));
    if (!object.Ok())
        return false;
    const WStringView named(name.data());
    if (type <= kByteArray && named == TEXT("WM/AlbumTitle"))
        ReadUtf16Field(value, value.RestBytes(), info.album);
    else if (named == TEXT("WM/Track"))
        info.trackNumber = Number(type, value) + 1;
    else if (named == TEXT("WM/TrackNumber"))
        info.trackNumber = Number(type, value);
    return true;
}

bool ReadExtendedContentDescription(ByteReader object, WmaInfo& info)
{
    const int descriptors = object.U16Le();
    for (int i = 0; i < descriptors; ++i) {
        if (!ReadDescriptor(object, info))
            return false;
    }
    return object.Ok();
}

bool ReadHeaderChild(const AsfId& id, ByteReader object, WmaInfo& info)
{
    if (id == kAsfFileProperties)
        return ReadFileProperties(object, info);
    if (id == kAsfContentDescription)
        return ReadContentDescription(object, info);
    if (id == kAsfExtendedContentDescription)
        return ReadExtendedContentDescription(object, info);
    return true;
}

} // namespace

int ReadWmaInfo(ByteSource& source, WmaInfo& info)
{
    std::array<std::byte, kMostObjectBytes> buffer;
    // A reader of the next `sizeBytes` bytes, of fewer at the end of the source.
    std::uint64_t offset = 0;
    const auto next = [&](std::size_t sizeBytes) {
        const std::size_t readBytes = source.ReadAt(offset, std::span(buffer).first(sizeBytes));
        offset += sizeBytes;
        return ByteReader(std::span(buffer).first(readBytes));
    };

    ByteReader header = next(kHeaderObjectBytes);
    if (TakeId(header) != kAsfHeader)
        return -1;
    for (int i = 0; i < kMostObjects; ++i) {
        ByteReader objectHeader = next(kObjectHeaderBytes);
        const AsfId id = TakeId(objectHeader);
        const std::uint64_t sizeBytes = objectHeader.U64Le();
        if (!objectHeader.Ok())
            return -1;
        if (id == kAsfData)
            return next(kDataObjectStartBytes).RestBytes() == kDataObjectStartBytes ? 0 : -1;
        if (sizeBytes < kObjectHeaderBytes || sizeBytes > kMostObjectBytes)
            return -1;
        if (!ReadHeaderChild(id, next(static_cast<std::size_t>(sizeBytes) - kObjectHeaderBytes), info))
            return -1;
    }
    return -1;
}

int ReadWmaInfo(const WCHAR* path, WmaInfo* info)
{
    if (info == nullptr)
        return -1;
    const UniqueFileStream file = OpenForReading(path);
    if (!file)
        return -1;
    FileSource source(file.Get());
    return ReadWmaInfo(source, *info);
}

void ReadUtf16Field(ByteReader& reader, std::size_t byteLength, std::span<WCHAR> out)
{
    ByteReader text(reader.Take(byteLength / 2 * 2));
    const std::size_t units = std::min(text.RestBytes() / 2, out.size() - 1);
    for (std::size_t i = 0; i < units; ++i)
        out[i] = static_cast<WCHAR>(text.U16Le());
    out[units] = 0;
}
