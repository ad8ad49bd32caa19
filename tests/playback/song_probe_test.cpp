// What kind of song a file is known as before the engine sees it.
#include "playback/media_graph_song_probe.h"

#include "playback/asf_song.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

using cardsong::playback::LookAtSong;
using cardsong::playback::ReadAsfSong;
using cardsong::playback::SongKind;

namespace {

class SongProbe : public testing::Test {
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

    // Cuts the song down, byte by byte where it begins.
    void ExpectKnownFrom(std::size_t fewestBytes, const std::string& name, SongKind kind)
    {
        const std::filesystem::path file = m_device.CardDirectory() + "/song";
        const std::string whole = Sample(name);
        m_device.WriteFile("card/song", whole);
        for (std::size_t length = whole.size(); length > 0; length -= length > fewestBytes + 500 ? 29 : 1) {
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

TEST_F(SongProbe, WmaSongHasAWholeHeaderAndAWholePacket)
{
    ExpectKnownFrom(kWmaFirstPacketEnd, "short_tone.wma", SongKind::Asf);
}

TEST_F(SongProbe, WmaHeaderOfNoPossibleSizeIsNone)
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

TEST_F(SongProbe, WmaObjectsOfNoPossibleSizeEndTheSearchForThePacketSize)
{
    for (const char size : { '\0', '\x17', '\xFF' }) {
        std::string bytes = Sample("short_tone.wma");
        bytes[30] = 0; // the file properties are not known as such
        bytes.replace(46, 8, 8, size);
        EXPECT_EQ(Look(bytes), SongKind::None) << +size;
    }
}

// One that went on by this size would step over an unknown object to the file properties.
TEST_F(SongProbe, WmaObjectThatEndsWithinItsOwnHeadEndsTheSearchToo)
{
    const auto eight = [](char low) { return low + std::string(7, '\0'); };
    const std::string object = std::string(16, 'x') + eight(16) + eight('y') + eight(24);
    std::string bytes = Sample("short_tone.wma");
    bytes.insert(30, object);
    bytes.replace(16, 2, std::string("\x16\x02", 2)); // the header's size: 0x1EE and 40
    EXPECT_EQ(Look(bytes), SongKind::None);
    bytes[30 + 16] = 40; // a size that reaches to the file properties
    EXPECT_EQ(Look(bytes), SongKind::Asf);
}

TEST_F(SongProbe, WmaPacketsOfNoSizeAreNone)
{
    std::string bytes = Sample("short_tone.wma");
    bytes.replace(kWmaPacketSizeAt, 4, 4, '\0');
    EXPECT_EQ(Look(bytes), SongKind::None);
    bytes.replace(kWmaPacketSizeAt, 4, 4, '\xFF');
    EXPECT_EQ(Look(bytes), SongKind::None);
}

TEST_F(SongProbe, WmaHeaderWithoutDataBehindItIsNone)
{
    std::string bytes = Sample("short_tone.wma");
    bytes[kWmaHeaderBytes] = 0;
    EXPECT_EQ(Look(bytes), SongKind::None);
}

TEST_F(SongProbe, Mp3SongIsKnownFromItsFirstWholeFrameOfSound)
{
    constexpr std::size_t kLengthFrameBytes = 182; // MPEG-2 layer III, 56 kb/s, 22.05 kHz
    constexpr std::size_t kFirstFrameBytes = 104;  // 32 kb/s
    ExpectKnownFrom(kLengthFrameBytes + kFirstFrameBytes, "short_tone.mp3", SongKind::Mpeg);
    ExpectKnownFrom(kFirstFrameBytes, "short_tone_without_length.mp3", SongKind::Mpeg);
}

// ---- what an ASF header tells ----

class AsfHeader : public SongProbe {
protected:
    auto Read(const std::string& bytes)
    {
        m_device.WriteFile("card/song", bytes);
        return ReadAsfSong(*cardsong::playback::SongFile::Open(m_device.CardDirectory() + "/song"));
    }
};

constexpr std::size_t kWmaPlayTimeAt = 30 + 64;
constexpr std::size_t kWmaFlagsAt = 30 + 88;
constexpr unsigned char kAudioStream[] = { 0x40, 0x9E, 0x69, 0xF8, 0x4D, 0x5B, 0xCF, 0x11 };

TEST_F(AsfHeader, TellsTheSongsLengthWithoutThePreroll)
{
    const auto song = Read(Sample("short_tone.wma"));
    ASSERT_TRUE(song && song->seconds);
    EXPECT_NEAR(*song->seconds, 1.2, 0.06);
    EXPECT_FALSE(song->isProtected);
}

TEST_F(AsfHeader, TellsNoLengthOfABroadcastNorOneThatThePrerollUsesUp)
{
    std::string bytes = Sample("short_tone.wma");
    bytes[kWmaFlagsAt] = static_cast<char>(bytes[kWmaFlagsAt] | 1);
    const auto broadcast = Read(bytes);
    ASSERT_TRUE(broadcast);
    EXPECT_FALSE(broadcast->seconds);
    bytes = Sample("short_tone.wma");
    bytes.replace(kWmaPlayTimeAt, 8, 8, '\0');
    const auto used = Read(bytes);
    ASSERT_TRUE(used);
    EXPECT_FALSE(used->seconds);
}

TEST_F(AsfHeader, WithoutAStreamOfSoundIsNoSong)
{
    std::string bytes = Sample("short_tone.wma");
    const std::size_t at = bytes.find(std::string(std::begin(kAudioStream), std::end(kAudioStream)));
    ASSERT_LT(at, kWmaHeaderBytes);
    bytes[at] = 'x';
    EXPECT_FALSE(Read(bytes));
    EXPECT_EQ(Look(bytes), SongKind::None);
}

// The identifiers of the three kinds of encryption, in place of one of the header's other objects.
TEST_F(AsfHeader, TellsThatTheSongIsProtected)
{
    const unsigned char encryptions[][16] = {
        { 0xFB, 0xB3, 0x11, 0x22, 0x23, 0xBD, 0xD2, 0x11, 0xB4, 0xB7, 0x00, 0xA0, 0xC9, 0x55, 0xFC, 0x6E },
        { 0x14, 0xE6, 0x8A, 0x29, 0x22, 0x26, 0x17, 0x4C, 0xB9, 0x35, 0xDA, 0xE0, 0x7E, 0xE9, 0x28, 0x9C },
        { 0x33, 0x85, 0x05, 0x43, 0x81, 0x69, 0xE6, 0x49, 0x9B, 0x74, 0xAD, 0x12, 0xCB, 0x86, 0xD5, 0x8C },
    };
    for (const auto& encryption : encryptions) {
        std::string object(std::begin(encryption), std::end(encryption));
        object += std::string("\x1C\0\0\0\0\0\0\0keys", 12);
        std::string bytes = Sample("short_tone.wma");
        bytes.insert(30, object);
        bytes.replace(16, 2, std::string("\x0A\x02", 2)); // the header's size: 0x1EE and 28
        const auto song = Read(bytes);
        ASSERT_TRUE(song);
        EXPECT_TRUE(song->isProtected);
        EXPECT_EQ(Look(bytes), SongKind::Asf);
    }
}

TEST_F(SongProbe, MissingFileAndFolderAreNone)
{
    EXPECT_EQ(LookAtSong(m_device.CardDirectory() + "/missing"), SongKind::None);
    EXPECT_EQ(LookAtSong(m_device.CardDirectory()), SongKind::None);
}

} // namespace
