// What is taken for MPEG audio before the engine sees it.
#include "playback/media_graph_song_probe.h"

#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

using cardsong::playback::HoldsMpegFrame;
using cardsong::playback::LookAtSong;
using cardsong::playback::SongKind;

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

TEST(SongProbe, LoneFrameHasToBeWhole)
{
    Bytes cut = FramesAt(0, kHeaders[0], 1);
    cut.pop_back();
    EXPECT_FALSE(HoldsMpegFrame(cut, true));
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

// ---- files ----

class SongFile : public testing::Test {
protected:
    SongKind Look(const std::string& bytes)
    {
        m_device.WriteFile("card/song", bytes);
        return LookAtSong(m_device.CardDirectory() + "/song");
    }
    static std::string Sample(const std::string& name)
    {
        std::ifstream file(std::filesystem::path(CARDSONG_TEST_SONGS) / name, std::ios::binary);
        return { std::istreambuf_iterator<char>(file), {} };
    }

    // Cuts the song down byte by byte.
    void ExpectKnownFrom(std::size_t fewestBytes, const std::string& name, SongKind kind)
    {
        const std::filesystem::path file = m_device.CardDirectory() + "/song";
        const std::string whole = Sample(name);
        m_device.WriteFile("card/song", whole);
        for (std::size_t length = whole.size(); length > 0; --length) {
            std::filesystem::resize_file(file, length);
            ASSERT_EQ(LookAtSong(file), length < fewestBytes ? SongKind::None : kind) << "cut to " << length;
        }
        EXPECT_EQ(Look(""), SongKind::None);
    }

    cardsong::test::ScratchDevice m_device;
};

// What stands where in short_tone.wma.
constexpr std::size_t kWmaHeaderBytes = 494;
constexpr std::size_t kWmaPacketSizeAt = 30 + 92; // in the file properties, the first object of the header
constexpr std::size_t kWmaPacketBytes = 3200;
constexpr std::size_t kWmaFirstPacketEnd = kWmaHeaderBytes + 50 + kWmaPacketBytes;

TEST_F(SongFile, WmaSongHasAWholeHeaderAndAWholePacket)
{
    ExpectKnownFrom(kWmaFirstPacketEnd, "short_tone.wma", SongKind::Asf);
}

TEST_F(SongFile, WmaHeaderOfNoPossibleSizeIsNone)
{
    for (const char top : { '\x01', '\x7F', '\x80', '\xFF' }) {
        std::string bytes = Sample("short_tone.wma");
        bytes[23] = top;
        EXPECT_EQ(Look(bytes), SongKind::None) << +top;
    }
    std::string empty = Sample("short_tone.wma");
    empty.replace(16, 8, 8, '\0');
    EXPECT_EQ(Look(empty), SongKind::None);
}

TEST_F(SongFile, WmaObjectsOfNoPossibleSizeEndTheSearchForThePacketSize)
{
    for (const char size : { '\0', '\x17', '\xFF' }) {
        std::string bytes = Sample("short_tone.wma");
        bytes[30] = 0; // the file properties are not known as such
        bytes.replace(46, 8, 8, size);
        EXPECT_EQ(Look(bytes), SongKind::None) << +size;
    }
}

TEST_F(SongFile, WmaPacketsOfNoSizeAreNone)
{
    std::string bytes = Sample("short_tone.wma");
    bytes.replace(kWmaPacketSizeAt, 4, 4, '\0');
    EXPECT_EQ(Look(bytes), SongKind::None);
    bytes.replace(kWmaPacketSizeAt, 4, 4, '\xFF');
    EXPECT_EQ(Look(bytes), SongKind::None);
}

TEST_F(SongFile, WmaHeaderWithoutDataBehindItIsNone)
{
    std::string bytes = Sample("short_tone.wma");
    bytes[kWmaHeaderBytes] = 0;
    EXPECT_EQ(Look(bytes), SongKind::None);
}

TEST_F(SongFile, Mp3SongIsKnownFromItsFirstWholeFrame)
{
    constexpr std::size_t kFrameBytes = 182; // the one with the song's length: MPEG-2 layer III, 56 kb/s, 22.05 kHz
    ExpectKnownFrom(kFrameBytes, "short_tone.mp3", SongKind::Mpeg);
}

TEST_F(SongFile, MissingFileAndFolderAreNone)
{
    EXPECT_EQ(LookAtSong(m_device.CardDirectory() + "/missing"), SongKind::None);
    EXPECT_EQ(LookAtSong(m_device.CardDirectory()), SongKind::None);
}

} // namespace
