// Any bytes as a GIF: its first frames are decoded. A frame covers the whole screen or has no canvas at all.
#include "gif/gif_sequence.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace {

constexpr int kFrames = 4; // two rounds of a file with two images: both ways of starting again are met

constexpr std::size_t kHighByteOfWidth = 7;
constexpr std::size_t kHighByteOfHeight = 9;
constexpr unsigned char kMostHighByte =
    3; // a screen of 16 million pixels takes a hundred times as long, and shows no more

void Check(const GifScreen& screen, const GifFrame& frame)
{
    const std::size_t screenPixels = std::size_t{ screen.widthPx } * screen.heightPx;
    const std::size_t imagePixels = std::size_t{ frame.image.widthPx } * frame.image.heightPx;
    if (!frame.canvas.empty() && (frame.canvas.size() != screenPixels || frame.IndexPixels().size() > imagePixels))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    std::vector<unsigned char> file(data, data + size);
    for (const std::size_t at : { kHighByteOfWidth, kHighByteOfHeight }) {
        if (at < size)
            file[at] = std::min(file[at], kMostHighByte);
    }
    GifSequence sequence;
    if (!sequence.Open(std::as_bytes(std::span(file)), 0xFFFF))
        return 0;
    for (int i = 0; i < kFrames; ++i) {
        if (const GifFrame* const frame = sequence.DecodeNextFrame())
            Check(sequence.Screen(), *frame);
    }
    return 0;
}
