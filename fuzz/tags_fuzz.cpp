// Any bytes as an MP3 file and as a WMA file.
#include "tags/mp3_info.h"
#include "tags/wma_info.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    MemorySource source(std::as_bytes(std::span(data, size)));
    Mp3FileInfo mp3;
    (void)ReadMp3Info(&source, mp3, TagFrames::Read);
    WmaInfo wma{};
    (void)ReadWmaInfo(source, wma);
    return 0;
}
