// Any bytes as a WMA song. Every text that comes out of it is terminated, and it makes no difference whether the song
// is read in blocks.
#include "tags/block_source.h"
#include "tags/wma_info.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    MemorySource source(std::as_bytes(std::span(data, size)));
    WmaInfo info;
    std::memset(&info, 0, sizeof info); // with what lies between the fields, to compare
    const int result = ReadWmaInfo(source, info);
    for (const auto* text : { &info.title, &info.author, &info.rights, &info.description, &info.album }) {
        if (std::ranges::find(*text, WCHAR{ 0 }) == std::end(*text))
            std::abort();
    }

    BlockSource blocks(source);
    WmaInfo inBlocks;
    std::memset(&inBlocks, 0, sizeof inBlocks);
    if (ReadWmaInfo(blocks, inBlocks) != result || std::memcmp(&info, &inBlocks, sizeof info) != 0)
        std::abort();
    return 0;
}
