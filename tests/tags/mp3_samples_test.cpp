// The MP3 files of tests/data/mp3: what real songs give, what hostile files give, and every beginning of the real ones.
#include "tags/mp3_info.h"
#include "tags/tag_results.h"
#include "tests/tags/beginnings.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::Bytes;
using cardsong::test::ForEveryBeginning;
using cardsong::test::Sample;

struct Expected {
    const char* name;
    int result;
    std::uint32_t isConstantBitRate;
    std::uint32_t bitRateKbps;
    std::uint32_t sampleRateHz;
    std::uint32_t frameBytes;
    std::uint32_t durationMs;
    std::int32_t frames;
};

constexpr Expected kSongs[] = {
    // name, result, constant, kbit/s, Hz, frame bytes, ms, ID3v2 frames
    { "cbr_id3v1", 0, 1, 128, 44100, 417, 235, 0 },        { "cbr_info", 0, 1, 128, 44100, 417, 253, 0 },
    { "cbr_joint_stereo", 0, 1, 128, 44100, 417, 227, 0 }, { "cbr_id3v24", 0, 1, 64, 44100, 208, 326, 2 },
    { "vbr_xing", 0, 0, 128, 44100, 417, 339, 0 },         { "vbr_id3v2", 0, 0, 128, 44100, 417, 339, 6 },
    { "vbr_mono_mpeg2", 0, 1, 64, 22050, 208, 150, 0 },
};

constexpr Expected kHostile[] = {
    { "false_first_sync", -20, 1, 0, 0, 0, 0, 0 },
    { "tag_size_past_the_end", -20, 1, 0, 0, 0, 0, 1 },
    { "frame_past_the_tag_end", 0, 1, 128, 44100, 417, 236, 2 },
    { "negative_frame_size", 0, 1, 128, 44100, 417, 236, 1 },
    { "frame_header_cut_short", 0, 1, 128, 44100, 417, 236, 1 },
    { "xing_bytes_below_tags", 0, 0, 128, 44100, 417, 0, 0 },
    { "xing_of_no_bytes", 0, 0, 128, 44100, 417, 0, 0 },
    { "xing_of_most_frames", 0, 0, 128, 44100, 417, 0xFFFFFFFF, 0 },
    { "shorter_than_a_tag", -20, 1, 0, 0, 0, 0, 0 },
    { "audio_below_an_id3v1_tag", 0, 1, 128, 44100, 417, 1, 0 },
    { "frame_of_one_byte", 0, 1, 0, 44100, 1, 7209, 0 },
    { "nothing_but_sync", -20, 1, 0, 0, 0, 0, 0 },
    { "nothing", -20, 1, 0, 0, 0, 0, 0 },
};

void Check(const Expected& expected)
{
    SCOPED_TRACE(expected.name);
    const Bytes bytes = Sample(std::string("mp3/") + expected.name + ".mp3");
    Mp3FileInfo info;
    MemorySource source(bytes);
    EXPECT_EQ(ReadMp3Info(&source, info, TagFrames::Read), expected.result);
    EXPECT_EQ(info.isConstantBitRate, expected.isConstantBitRate);
    EXPECT_EQ(info.frame.bitRateKbps, expected.bitRateKbps);
    EXPECT_EQ(info.frame.sampleRateHz, expected.sampleRateHz);
    EXPECT_EQ(info.frame.frameBytes, expected.frameBytes);
    EXPECT_EQ(info.durationMs, expected.durationMs);
    EXPECT_EQ(info.id3v2Frames.GetCount(), expected.frames);
    EXPECT_EQ(info.fileBytes, bytes.size());
}

TEST(Mp3Samples, RealSongsGiveTheirStreamInfo)
{
    for (const Expected& song : kSongs)
        Check(song);
}

TEST(Mp3Samples, HostileFilesGiveTheDocumentedResult)
{
    for (const Expected& file : kHostile)
        Check(file);
}

TEST(Mp3Samples, AXingHeaderOfAnEncoderIsReadWhole)
{
    const Bytes bytes = Sample("mp3/vbr_xing.mp3");
    Mp3FileInfo info;
    MemorySource source(bytes);
    ASSERT_EQ(ReadMp3Info(&source, info, TagFrames::Read), kTagOk);
    EXPECT_EQ(info.xing.flags, 15u);
    EXPECT_EQ(info.xing.frameCount, 13u);
    EXPECT_EQ(info.xing.byteCount, 2812u);
    EXPECT_EQ(info.xing.tableOfContents[1], 0x4D);
}

TEST(Mp3Samples, TheTagsOfAnEncoderAreKept)
{
    const Bytes bytes = Sample("mp3/cbr_id3v1.mp3");
    Mp3FileInfo info;
    MemorySource source(bytes);
    ASSERT_EQ(ReadMp3Info(&source, info, TagFrames::Read), kTagOk);
    EXPECT_EQ(std::string(info.id3v1.title, 11), "Plain Title");
    EXPECT_EQ(info.id3v1.track, 7);
}

TEST(Mp3Samples, EveryBeginningOfASongIsReadOrRefused)
{
    for (const Expected& song : kSongs) {
        const Bytes whole = Sample(std::string("mp3/") + song.name + ".mp3");
        ForEveryBeginning(whole, [&song](MemorySource& source, std::size_t sizeBytes) {
            Mp3FileInfo info;
            const int result = ReadMp3Info(&source, info, TagFrames::Read);
            ASSERT_TRUE(result == kTagOk || result == kTagBadData) << song.name << ' ' << sizeBytes;
            ASSERT_LE(info.durationMs, song.durationMs) << song.name << ' ' << sizeBytes;
            ASSERT_EQ(info.frame.frameBytes, result == kTagOk ? song.frameBytes : 0u) << song.name << ' ' << sizeBytes;
        });
    }
}

} // namespace
