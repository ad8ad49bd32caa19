// Any bytes as a song with a USLT frame.
#include "fuzz/embedded_lyrics_check.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    cardsong::fuzz::CheckReader(data, size, ReadUsltFrame);
    return 0;
}
