// Any bytes as a GIF: every frame of the first few is decoded.
#include "gui/gif_sequence.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    GifSequence sequence;
    if (sequence.Open(std::as_bytes(std::span(data, size)), 0xFFFF))
        for (int i = 0; i < 4; ++i)
            (void)sequence.DecodeNextFrame();
    return 0;
}
