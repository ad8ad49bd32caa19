#include "tags/id3_tags.h"

#include "tags/byte_reader.h"
#include "tags/byte_text.h"
#include "tags/id3_frame_table.h"
#include "tags/mp3_info.h"
#include "tags/tag_results.h"

#include <cstring>
#include <limits>
#include <memory>

namespace {

constexpr std::size_t kFrameHeaderBytes = 10;
// Frames behind this much of a tag are not kept: a larger tag is pictures, or a lie about its size.
constexpr std::uint64_t kMostBodyBytes = 16u << 20;

std::uint32_t SynchsafeSize(const std::uint8_t (&size)[4])
{
    std::uint32_t value = 0;
    for (const std::uint8_t digit : size)
        value = value << 7 | (digit & 0x7Fu);
    return value;
}

// Appends the frame at the front of `body`. False when the list ends here.
bool TakeFrame(CPtrListCtrl& list, ByteReader& body)
{
    ByteReader header(body.Take(kFrameHeaderBytes));
    const auto identifier = header.Take(4);
    const std::uint32_t size = header.U32Be();
    const std::uint16_t flags = header.U16Be();
    if (!header.Ok() || size < 1 || size > static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max()))
        return false;

    auto frame = std::make_unique<Id3Frame>();
    std::memcpy(frame->identifier, identifier.data(), identifier.size());
    if (LookupFrameDescription(*frame) == 0)
        return false;
    const auto data = body.Take(std::min<std::size_t>(size, body.RestBytes()));
    frame->size = static_cast<std::int32_t>(data.size());
    frame->flags = flags;
    frame->data.reserve(data.size() + 1);
    frame->data.assign(data.begin(), data.end());
    frame->data.push_back(std::byte{ 0 });
    list.Add(frame.release(), -1);
    return true;
}

} // namespace

int ReadId3v2(ByteSource* source, Mp3FileInfo& info, TagFrames frames)
{
    if (source == nullptr)
        return kTagNothingOpen;
    info.id3v2Header = {};
    info.id3v2TagBytes = 0;
    std::array<std::byte, sizeof(Id3v2Header)> header = {};
    source->ReadAt(0, header);
    if (!StartsWithIgnoringCase(header, "ID3"))
        return kTagOk;

    std::memcpy(&info.id3v2Header, header.data(), header.size());
    info.id3v2TagBytes = SynchsafeSize(info.id3v2Header.size);
    if (frames == TagFrames::Skip)
        return kTagOk;
    const std::uint64_t fileBytes = source->SizeBytes();
    const std::uint64_t restBytes = fileBytes > header.size() ? fileBytes - header.size() : 0;
    info.id3v2TagBytes = static_cast<std::uint32_t>(std::min<std::uint64_t>(info.id3v2TagBytes, restBytes));
    std::vector<std::byte> body(static_cast<std::size_t>(std::min<std::uint64_t>(info.id3v2TagBytes, kMostBodyBytes)));
    const std::size_t readBytes = source->ReadAt(header.size(), body);
    if (readBytes < body.size()) {
        body.resize(readBytes);
        info.id3v2TagBytes = static_cast<std::uint32_t>(readBytes);
    }
    ParseId3v2Frames(info.id3v2Frames, body);
    return kTagOk;
}

void ParseId3v2Frames(CPtrListCtrl& list, std::span<const std::byte> body)
{
    list.DeleteAll();
    ByteReader reader(body);
    while (list.GetCount() < kMostTagFrames && TakeFrame(list, reader)) {
    }
}

int LookupFrameDescription(Id3Frame& frame)
{
    const char* description = FrameDescription(std::as_bytes(std::span(frame.identifier).first(4)));
    if (description == nullptr)
        return 0;
    frame.description = description;
    return 1;
}

int ReadId3v1(ByteSource* source, Mp3FileInfo& info)
{
    if (source == nullptr)
        return kTagNothingOpen;
    info.id3v1 = {};
    std::array<std::byte, sizeof(Id3v1Tag)> block = {};
    const std::uint64_t fileBytes = source->SizeBytes();
    if (fileBytes < block.size() || source->ReadAt(fileBytes - block.size(), block) < block.size())
        return kTagOk;
    const bool isTag = StartsWithIgnoringCase(block, "TAG");
    std::memcpy(&info.id3v1, block.data(), isTag ? block.size() : sizeof info.id3v1.magic);
    return kTagOk;
}

bool HasId3v1(const Id3v1Tag& tag)
{
    return StartsWithIgnoringCase(std::as_bytes(std::span(tag.magic)), "TAG");
}

void FreeId3Frames(CPtrListCtrl& list)
{
    for (std::int32_t i = list.GetCount() - 1; i >= 0; --i)
        delete static_cast<Id3Frame*>(list.GetAt(i));
    list.DeleteAll();
}
