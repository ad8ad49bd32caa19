// Any bytes as a song with a Lyrics3 block.
#include "fuzz/embedded_lyrics_check.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    cardsong::fuzz::CheckReader(data, size, ReadLyrics3Block);
    return 0;
}
