// Any bytes as a WMA song. Every text that comes out of it is terminated.
#include "tags/wma_info.h"

#include <algorithm>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    MemorySource source(std::as_bytes(std::span(data, size)));
    WmaInfo info{};
    (void)ReadWmaInfo(source, info);
    for (const auto* text : { &info.title, &info.author, &info.rights, &info.description, &info.album }) {
        if (std::ranges::find(*text, WCHAR{ 0 }) == std::end(*text))
            std::abort();
    }
    return 0;
}
