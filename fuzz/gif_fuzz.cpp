// Any bytes as a GIF: its first frames are decoded. A frame covers the whole screen or has no canvas at all.
#include "gif/gif_sequence.h"

#include <cstdlib>

namespace {

constexpr int kFrames = 4; // two rounds of a file with two images: both ways of starting again are met

void Check(const GifScreen& screen, const GifFrame& frame)
{
    const std::size_t screenPixels = std::size_t{ screen.widthPx } * screen.heightPx;
    const std::size_t imagePixels = std::size_t{ frame.image.widthPx } * frame.image.heightPx;
    if (!frame.canvas.empty() &&
        (frame.canvas.size() != screenPixels || frame.indexPixels.Pixels().size() != imagePixels))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    GifSequence sequence;
    if (!sequence.Open(std::as_bytes(std::span(data, size)), 0xFFFF))
        return 0;
    for (int i = 0; i < kFrames; ++i) {
        if (const GifFrame* const frame = sequence.DecodeNextFrame())
            Check(sequence.Screen(), *frame);
    }
    return 0;
}
