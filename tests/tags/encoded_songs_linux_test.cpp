// Songs as encoders make them, encoded when the tests are built: their lengths beside a second opinion, and their
// titles. Where a rule of ours makes the length another one, the case says which and what comes out.
#include "tags/id3_frame_search.h"
#include "tags/mp3_info.h"
#include "tags/tag_results.h"
#include "tags/wma_info.h"
#include "tests/tags/bytes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <memory>

namespace {

using cardsong::test::Bytes;

struct Song {
    Bytes bytes;
    double otherMs; // what the other program says
};

const std::map<std::string, Song>& Songs()
{
    static const auto s_songs = [] {
        std::map<std::string, Song> songs;
        const std::string folder = CARDSONG_ENCODED_SONGS;
        std::ifstream list(folder + "/durations.txt");
        std::string name;
        for (double ms = 0; list >> name >> ms;) {
            std::ifstream file(folder + "/" + name, std::ios::binary);
            songs[name] = { Bytes(std::string{ std::istreambuf_iterator<char>(file), {} }), ms };
        }
        return songs;
    }();
    return s_songs;
}

const Song& Named(const std::string& name)
{
    return Songs().at(name);
}

std::unique_ptr<Mp3FileInfo> Read(const Song& song)
{
    auto info = std::make_unique<Mp3FileInfo>();
    MemorySource source(song.bytes);
    EXPECT_EQ(ReadMp3Info(&source, *info, TagFrames::Read), kTagOk);
    return info;
}

// The time of the sound's bytes at `kbps`: the bytes of an ID3v1 tag are taken off whether it is there or not.
double MsAtRate(const Song& song, const Mp3FileInfo& info, double kbps)
{
    constexpr double kEndTagBytes = 128;
    return (static_cast<double>(song.bytes.size()) - info.id3v2TagBytes - kEndTagBytes) * 8 / kbps;
}

enum class InfoFrame { None, Counted };
enum class EndTag { None, Present };

TEST(EncodedSongs, AConstantRateIsWithinAFrameOfTheOtherOpinion)
{
    // A frame with an Info header counts as sound, and 128 bytes are taken off for a tag that is not there.
    constexpr struct {
        const char* name;
        std::uint32_t kbps;
        std::uint32_t sampleRateHz;
        InfoFrame infoFrame;
        EndTag endTag;
    } kSongs[] = {
        { "mpeg1_stereo_64.mp3", 64, 44100, InfoFrame::Counted, EndTag::None },
        { "mpeg1_stereo_128.mp3", 128, 44100, InfoFrame::Counted, EndTag::None },
        { "mpeg1_stereo_320.mp3", 320, 44100, InfoFrame::Counted, EndTag::None },
        { "mpeg1_joint_128.mp3", 128, 44100, InfoFrame::Counted, EndTag::None },
        { "mpeg1_mono_64.mp3", 64, 44100, InfoFrame::Counted, EndTag::None },
        { "mpeg1_48000_192.mp3", 192, 48000, InfoFrame::Counted, EndTag::None },
        { "mpeg1_32000_96.mp3", 96, 32000, InfoFrame::Counted, EndTag::None },
        { "mpeg1_without_info.mp3", 128, 44100, InfoFrame::None, EndTag::None },
        { "mpeg2_22050_64.mp3", 64, 22050, InfoFrame::Counted, EndTag::None },
        { "mpeg2_24000_32.mp3", 32, 24000, InfoFrame::None, EndTag::None },
        { "mpeg2_16000_24.mp3", 24, 16000, InfoFrame::None, EndTag::None },
        { "id3v1.mp3", 128, 44100, InfoFrame::Counted, EndTag::Present },
        { "id3v23_latin1.mp3", 128, 44100, InfoFrame::Counted, EndTag::None },
        { "id3v23_utf16.mp3", 128, 44100, InfoFrame::Counted, EndTag::None },
        { "ffmpeg_cbr.mp3", 128, 44100, InfoFrame::Counted, EndTag::None },
        { "ffmpeg_id3v23.mp3", 128, 44100, InfoFrame::Counted, EndTag::None },
        { "ffmpeg_id3v24.mp3", 128, 44100, InfoFrame::Counted, EndTag::None },
        { "ffmpeg_all_tags.mp3", 128, 44100, InfoFrame::Counted, EndTag::Present },
    };
    for (const auto& expected : kSongs) {
        SCOPED_TRACE(expected.name);
        const Song& song = Named(expected.name);
        const auto info = Read(song);
        EXPECT_EQ(info->isConstantBitRate, 1U);
        EXPECT_EQ(info->frame.bitRateKbps, expected.kbps);
        EXPECT_EQ(info->frame.sampleRateHz, expected.sampleRateHz);
        EXPECT_EQ(HasId3v1(info->id3v1), expected.endTag == EndTag::Present);
        const double infoFrameMs = expected.infoFrame == InfoFrame::Counted ? info->frame.frameMs : 0;
        const double endTagMs = expected.endTag == EndTag::Present ? 0 : 128.0 * 8 / expected.kbps;
        EXPECT_NEAR(info->durationMs, song.otherMs + infoFrameMs - endTagMs, info->frame.frameMs);
    }
}

TEST(EncodedSongs, AXingHeaderGivesTheOtherOpinionToTheMillisecond)
{
    for (const char* name : { "mpeg1_vbr_2.mp3", "mpeg1_vbr_9.mp3", "mpeg1_48000_vbr.mp3", "mpeg1_abr.mp3",
                              "both_tags.mp3", "ffmpeg_vbr.mp3" }) {
        SCOPED_TRACE(name);
        const Song& song = Named(name);
        const auto info = Read(song);
        EXPECT_EQ(info->isConstantBitRate, 0U);
        EXPECT_NEAR(info->durationMs, song.otherMs, 1);
    }
}

// The cases below differ from the other opinion by far, and do so by rule.
void ExpectOtherTime(const char* name, double expectedMs)
{
    SCOPED_TRACE(name);
    const Song& song = Named(name);
    const auto info = Read(song);
    EXPECT_EQ(info->isConstantBitRate, 1U);
    EXPECT_NEAR(info->durationMs, expectedMs, info->frame.frameMs);
    EXPECT_GT(std::abs(info->durationMs - song.otherMs), 3 * info->frame.frameMs);
}

TEST(EncodedSongs, AXingHeaderOfMonoOrMpeg2IsOverlookedAndTheFirstFramesRateTaken)
{
    for (const char* name : { "mpeg1_mono_vbr.mp3", "mpeg2_vbr.mp3" }) {
        const Song& song = Named(name);
        const auto info = Read(song);
        ExpectOtherTime(name, MsAtRate(song, *info, info->frame.bitRateKbps));
    }
}

TEST(EncodedSongs, SomeRatesOfMpeg2AreTheDevicesOwn)
{
    constexpr struct {
        const char* name;
        std::uint32_t readKbps; // another than the name's
    } kSongs[] = { { "mpeg2_22050_40.mp3", 64 }, { "mpeg2_22050_80.mp3", 128 }, { "mpeg2_22050_160.mp3", 320 } };
    for (const auto& expected : kSongs) {
        const Song& song = Named(expected.name);
        const auto info = Read(song);
        EXPECT_EQ(info->frame.bitRateKbps, expected.readKbps);
        ExpectOtherTime(expected.name, MsAtRate(song, *info, expected.readKbps));
    }
}

TEST(EncodedSongs, Mpeg25PlaysForHalfItsTime)
{
    constexpr struct {
        const char* name;
        std::uint32_t kbps;
    } kSongs[] = { { "mpeg25_11025_32.mp3", 32 }, { "mpeg25_8000_16.mp3", 16 } };
    for (const auto& expected : kSongs) {
        const Song& song = Named(expected.name);
        const auto info = Read(song);
        EXPECT_EQ(info->frame.version, kMpeg25);
        EXPECT_EQ(info->frame.bitRateKbps, expected.kbps);
        ExpectOtherTime(expected.name, MsAtRate(song, *info, expected.kbps) / 2);
    }
}

std::string Title(const Song& song, const Mp3FileInfo& info)
{
    MemorySource source(song.bytes);
    const auto data = FindId3v2Frame(source, info.id3v2TagBytes, info.id3v2Header.version, "TIT2", 100);
    std::string text(reinterpret_cast<const char*>(data.data()), data.size());
    text.erase(text.find_last_not_of('\0') + 1); // some encoders end it, some do not
    return text;
}

TEST(EncodedSongs, TheTitleFrameIsFoundInEveryEncoding)
{
    const std::string latin1 = { 0, 'D', '\xE9', 'j', '\xE0' };
    const std::string utf16 = "\1\xFF\xFE\x09\x83\x89\x83\xB1\x82";
    const struct {
        const char* name;
        std::uint8_t version;
        std::string title;
    } songs[] = {
        { "id3v23_latin1.mp3", 3, latin1 },
        { "id3v23_utf16.mp3", 3, utf16 },
        { "ffmpeg_id3v23.mp3", 3, "\1\xFF\xFE\x0F\x5C\x1F\x66\x1F\x66" },
        { "ffmpeg_id3v24.mp3", 4, "\3\xE5\xB0\x8F\xE6\x98\x9F\xE6\x98\x9F" },
        { "ffmpeg_all_tags.mp3", 3, std::string("\0Tagged", 7) },
    };
    for (const auto& expected : songs) {
        SCOPED_TRACE(expected.name);
        const Song& song = Named(expected.name);
        const auto info = Read(song);
        EXPECT_EQ(info->id3v2Header.version, expected.version);
        EXPECT_EQ(Title(song, *info), expected.title);
        ASSERT_GT(info->id3v2Frames.GetCount(), 0);
    }
}

TEST(EncodedSongs, AnId3v1TitleIsFoundBesideAndWithoutAnId3v2Tag)
{
    EXPECT_STREQ(Read(Named("id3v1.mp3"))->id3v1.title, "Plain");
    EXPECT_EQ(Read(Named("id3v1.mp3"))->id3v2TagBytes, 0U);
    EXPECT_STREQ(Read(Named("both_tags.mp3"))->id3v1.title, "Both");
    EXPECT_GT(Read(Named("both_tags.mp3"))->id3v2TagBytes, 0U);
    EXPECT_STREQ(Read(Named("ffmpeg_all_tags.mp3"))->id3v1.title, "Tagged");
}

TEST(EncodedSongs, WmaOfBothVersionsGivesTheOtherOpinionAndItsTitle)
{
    const struct {
        const char* name;
        WString title;
    } songs[] = { { "wmav1.wma", TEXT("Version1") },
                  { "wmav2.wma", TEXT("\x6B22\x4E50\x9882") },
                  { "wmav2_untitled.wma", TEXT("") } };
    for (const auto& expected : songs) {
        SCOPED_TRACE(expected.name);
        const Song& song = Named(expected.name);
        const auto info = std::make_unique<WmaInfo>();
        MemorySource source(song.bytes);
        EXPECT_EQ(ReadWmaInfo(source, *info), 0);
        EXPECT_NEAR(static_cast<double>(info->duration) / 10'000, song.otherMs, 1);
        EXPECT_EQ(WString(info->title), expected.title);
        EXPECT_EQ(info->fileBytes, song.bytes.size());
    }
}

TEST(EncodedSongs, AllThirtyFourWereEncoded)
{
    EXPECT_EQ(Songs().size(), 34U);
    for (const auto& [name, song] : Songs())
        EXPECT_GT(song.bytes.size(), 1000U) << name;
}

} // namespace
