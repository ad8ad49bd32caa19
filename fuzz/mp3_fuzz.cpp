// Any bytes as an MP3 song. A first frame that was found has a length, and a tag frame's data end in a zero.
#include "tags/mp3_info.h"
#include "tags/tag_results.h"

#include <cstdlib>

namespace {

void Check(const Mp3FileInfo& info)
{
    for (std::int32_t i = 0; i < info.id3v2Frames.GetCount(); ++i) {
        const auto& frame = *static_cast<const Id3Frame*>(info.id3v2Frames.GetAt(i));
        if (frame.size < 0 || frame.data.size() != static_cast<std::size_t>(frame.size) + 1 ||
            frame.data.back() != std::byte{ 0 })
            std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    MemorySource source(std::as_bytes(std::span(data, size)));
    Mp3FileInfo whole;
    const int result = ReadMp3Info(&source, whole, TagFrames::Read);
    Check(whole);
    if (result == kTagOk && whole.frame.frameBytes == 0)
        std::abort();
    Mp3FileInfo brief;
    (void)ReadMp3Info(&source, brief, TagFrames::Skip);
    return 0;
}
