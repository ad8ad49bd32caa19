// Any bytes as an MP3 song. A first frame that was found has a length, a tag frame's data end in a zero, no list or
// read is longer than the song or its cap, and it makes no difference whether the song is read in blocks.
#include "tags/block_source.h"
#include "tags/id3_frame_search.h"
#include "tags/id3_frame_table.h"
#include "tags/mp3_info.h"
#include "tags/tag_results.h"

#include <cstdlib>

namespace {

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

void Check(const Mp3FileInfo& info, std::size_t songBytes)
{
    Require(info.id3v2TagBytes <= songBytes && info.id3v2Frames.GetCount() <= kMostTagFrames);
    std::size_t framesBytes = 0;
    for (std::int32_t i = 0; i < info.id3v2Frames.GetCount(); ++i) {
        const auto& frame = *static_cast<const Id3Frame*>(info.id3v2Frames.GetAt(i));
        Require(frame.size >= 0 && frame.data.size() == static_cast<std::size_t>(frame.size) + 1 &&
                frame.data.back() == std::byte{ 0 } && frame.description != nullptr);
        framesBytes += static_cast<std::size_t>(frame.size);
    }
    Require(framesBytes <= info.id3v2TagBytes);
}

void CheckTitle(ByteSource& source, const Mp3FileInfo& info)
{
    constexpr std::size_t kMostBytes = 64;
    for (const auto* identifier : { "TIT2", "APIC" }) {
        const auto data = FindId3v2Frame(source, info.id3v2TagBytes, info.id3v2Header.version, identifier, kMostBytes);
        Require(data.size() <= kMostBytes);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    MemorySource source(std::as_bytes(std::span(data, size)));
    Mp3FileInfo whole;
    const int result = ReadMp3Info(&source, whole, TagFrames::Read);
    Check(whole, size);
    Require(result != kTagOk || whole.frame.frameBytes != 0);

    Mp3FileInfo brief;
    const int briefResult = ReadMp3Info(&source, brief, TagFrames::Skip);
    CheckTitle(source, brief);

    BlockSource blocks(source);
    Mp3FileInfo inBlocks;
    Require(ReadMp3Info(&blocks, inBlocks, TagFrames::Skip) == briefResult);
    Require(inBlocks.durationMs == brief.durationMs && inBlocks.fileBytes == size);
    CheckTitle(blocks, inBlocks);
    return 0;
}
