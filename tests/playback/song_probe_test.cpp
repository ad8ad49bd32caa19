// What is taken for MPEG audio before the engine sees it.
#include "playback/media_graph_song_probe.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

using cardsong::playback::HoldsMpegFrame;

namespace {

using Bytes = std::vector<unsigned char>;

struct HeaderCase {
    const char* name;
    std::array<unsigned char, 4> header;
    std::size_t frameBytes;
};

// Lengths worked out by hand from the bit rate and the sample rate in each header.
const HeaderCase kHeaders[] = {
    { "MPEG-1 layer III, 128 kb/s, 44.1 kHz", { 0xFF, 0xFB, 0x90, 0x00 }, 417 },
    { "the same with padding", { 0xFF, 0xFB, 0x92, 0x00 }, 418 },
    { "MPEG-1 layer III, 320 kb/s, 48 kHz", { 0xFF, 0xFB, 0xE4, 0x00 }, 960 },
    { "MPEG-1 layer II, 192 kb/s, 32 kHz", { 0xFF, 0xFD, 0xA8, 0x00 }, 864 },
    { "MPEG-1 layer I, 384 kb/s, 44.1 kHz", { 0xFF, 0xFF, 0xC0, 0x00 }, 416 },
    { "MPEG-2 layer III, 32 kb/s, 22.05 kHz", { 0xFF, 0xF3, 0x40, 0x00 }, 104 },
    { "MPEG-2.5 layer III, 8 kb/s, 8 kHz", { 0xFF, 0xE3, 0x18, 0x00 }, 72 },
};

Bytes FramesAt(std::size_t start, const HeaderCase& frame, std::size_t count)
{
    Bytes bytes(start + count * frame.frameBytes);
    for (std::size_t i = 0; i < count; ++i)
        std::copy(frame.header.begin(), frame.header.end(),
                  bytes.begin() + static_cast<std::ptrdiff_t>(start + i * frame.frameBytes));
    return bytes;
}

TEST(SongProbe, FrameThatAnotherFollowsIsFoundInEveryLayer)
{
    for (const HeaderCase& frame : kHeaders) {
        SCOPED_TRACE(frame.name);
        EXPECT_TRUE(HoldsMpegFrame(FramesAt(0, frame, 2), false));
        EXPECT_TRUE(HoldsMpegFrame(FramesAt(1000, frame, 2), false));
    }
}

TEST(SongProbe, FollowerHasToStandWhereTheFrameEnds)
{
    for (const HeaderCase& frame : kHeaders) {
        SCOPED_TRACE(frame.name);
        Bytes bytes = FramesAt(0, frame, 2);
        bytes.insert(bytes.begin() + 4, 0);
        bytes.resize(bytes.size() + 4); // the follower's own end is in sight, and nothing follows it
        EXPECT_FALSE(HoldsMpegFrame(bytes, false));
    }
}

TEST(SongProbe, FollowerHasToBeOfTheSameKind)
{
    Bytes bytes = FramesAt(0, kHeaders[0], 2);
    bytes[kHeaders[0].frameBytes + 1] = 0xFD; // layer II after layer III
    bytes.resize(4000);
    EXPECT_FALSE(HoldsMpegFrame(bytes, true));
}

TEST(SongProbe, LastFrameNeedsNoFollowerAtTheEndOfTheFile)
{
    const Bytes lone = FramesAt(0, kHeaders[0], 1);
    EXPECT_TRUE(HoldsMpegFrame(lone, true));
    EXPECT_FALSE(HoldsMpegFrame(lone, false));
}

TEST(SongProbe, HeadersWithForbiddenFieldsAreNone)
{
    const std::array<unsigned char, 4> forbidden[] = {
        { 0xFF, 0xEB, 0x90, 0x00 }, // version 1 is reserved
        { 0xFF, 0xF9, 0x90, 0x00 }, // layer 0 is reserved
        { 0xFF, 0xFB, 0xF0, 0x00 }, // bit rate 15
        { 0xFF, 0xFB, 0x9C, 0x00 }, // sample rate 3
        { 0xFF, 0xDB, 0x90, 0x00 }, // a bit of the sync word missing
    };
    for (const auto& header : forbidden)
        EXPECT_FALSE(HoldsMpegFrame(header, true)) << std::hex << +header[1] << ' ' << +header[2];
}

TEST(SongProbe, RunsOfOneByteAreNoSong)
{
    for (unsigned value = 0; value < 256; ++value)
        EXPECT_FALSE(HoldsMpegFrame(Bytes(5000, static_cast<unsigned char>(value)), true)) << value;
}

TEST(SongProbe, FewerBytesThanAHeaderAreNoSong)
{
    const Bytes header = { 0xFF, 0xFB, 0x90, 0x00 };
    for (std::size_t length = 0; length < header.size(); ++length)
        EXPECT_FALSE(HoldsMpegFrame(std::span(header).first(length), true));
}

} // namespace
