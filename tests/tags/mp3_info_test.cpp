#include "tags/mp3_info.h"

#include "tags/tag_results.h"
#include "tests/platform/scratch_device.h"
#include "tests/tags/bytes.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::Bytes;
using cardsong::test::ScratchDevice;

constexpr std::uint32_t kFrame128 = 0xFFFB9004; // MPEG-1, 128 kbit/s, 44100 Hz: 417 bytes, 26.12 ms

int Read(const Bytes& bytes, Mp3FileInfo& info)
{
    MemorySource source(bytes);
    return ReadMp3Info(&source, info, TagFrames::Read);
}

std::int64_t FirstSync(const Bytes& bytes, std::uint32_t tagBytes = 0)
{
    MemorySource source(bytes);
    Mp3FileInfo info;
    info.id3v2TagBytes = tagBytes;
    return FindFirstFrameSync(source, info);
}

TEST(Mp3Info, ANullSourceIsNothingOpen)
{
    Mp3FileInfo info;
    EXPECT_EQ(ReadMp3Info(nullptr, info, TagFrames::Read), -18);
}

TEST(Mp3Info, AConstantBitRateGivesTheTimeOfTheFileSize)
{
    Bytes bytes;
    bytes.Big(kFrame128, 4).Fill(1'000'128 - 4);
    Mp3FileInfo info;
    ASSERT_EQ(Read(bytes, info), 0);
    EXPECT_EQ(info.fileBytes, 1'000'128u);
    EXPECT_EQ(info.isConstantBitRate, 1u);
    EXPECT_EQ(info.frame.frameBytes, 417u);
    EXPECT_EQ(info.durationMs, 62'643u); // 1,000,000 x 26.1224 / 417 is 62,643.76
}

TEST(Mp3Info, TheTagIsTakenOffTheFileSize)
{
    Bytes bytes("ID3\3");
    bytes.Fill(5).Fill(1, 100).Fill(100).Big(kFrame128, 4).Fill(41'700 + 128 - 14);
    Mp3FileInfo info;
    ASSERT_EQ(Read(bytes, info), 0);
    EXPECT_EQ(info.id3v2TagBytes, 100u);
    EXPECT_EQ(info.durationMs, 2612u); // the ten header bytes count as audio: 41,700 bytes are 100 frames
}

// A frame of which enough can be read leaves 28 bytes behind any tag and the 128 taken off for an end tag.
TEST(Mp3Info, TheShortestSongHasTheTimeOf28Bytes)
{
    Bytes bytes("ID3\3");
    bytes.Fill(5).Fill(1, 100).Fill(90).Big(kFrame128, 4).Fill(152);
    Mp3FileInfo info;
    ASSERT_EQ(Read(bytes, info), 0);
    EXPECT_EQ(info.fileBytes, 256u);
    EXPECT_EQ(info.durationMs, 1u); // 28 x 26.1224 / 417 is 1.75
}

TEST(Mp3Info, AnEndTagIsTakenOffTheFileSizeLikeTheSpaceForOne)
{
    Bytes bytes;
    bytes.Big(kFrame128, 4).Fill(41'700 - 4).Text("TAG").Fill(125);
    Mp3FileInfo info;
    ASSERT_EQ(Read(bytes, info), 0);
    EXPECT_EQ(info.durationMs, 2612u);
    Bytes without;
    without.Big(kFrame128, 4).Fill(41'700 - 4).Fill(128);
    ASSERT_EQ(Read(without, info), 0);
    EXPECT_EQ(info.durationMs, 2612u);
}

TEST(Mp3Info, AXingHeaderGivesTheTimeOfItsFrames)
{
    Bytes bytes;
    bytes.Big(kFrame128, 4).Fill(32).Text("Xing").Big(1, 4).Big(1000, 4).Fill(1000);
    Mp3FileInfo info;
    ASSERT_EQ(Read(bytes, info), 0);
    EXPECT_EQ(info.isConstantBitRate, 0u);
    EXPECT_EQ(info.xing.frameCount, 1000u);
    EXPECT_EQ(info.xing.byteCount, bytes.size());
    EXPECT_EQ(info.durationMs, 26'122u);
}

TEST(Mp3Info, AXingHeaderWithoutFramesIsCompletedFirst)
{
    Bytes bytes;
    bytes.Big(kFrame128, 4).Fill(32).Text("Xing").Big(0, 4).Fill(417 * 10 + 128 - 44);
    Mp3FileInfo info;
    ASSERT_EQ(Read(bytes, info), 0);
    EXPECT_EQ(info.xing.frameCount, 10u);
    EXPECT_EQ(info.durationMs, 261u);
}

TEST(Mp3Info, AnInfoHeaderIsOneOfConstantBitRate)
{
    Bytes bytes;
    bytes.Big(kFrame128, 4).Fill(32).Text("Info").Big(1, 4).Big(1000, 4).Fill(41'700 + 128 - 48);
    Mp3FileInfo info;
    ASSERT_EQ(Read(bytes, info), 0);
    EXPECT_EQ(info.isConstantBitRate, 1u);
    EXPECT_EQ(info.durationMs, 2612u);
}

TEST(Mp3Info, OnlyTheFirstSyncWordIsTried)
{
    Bytes bytes;
    bytes.Big(0xFFE10000, 4).Big(kFrame128, 4).Fill(1000);
    Mp3FileInfo info;
    EXPECT_EQ(Read(bytes, info), -20);
    EXPECT_EQ(info.durationMs, 0u);
}

TEST(Mp3Info, AFirstFrameOfLessThanItsFirst156BytesIsRefused)
{
    Bytes bytes;
    bytes.Big(kFrame128, 4).Fill(152);
    Mp3FileInfo info;
    EXPECT_EQ(Read(bytes, info), 0);
    bytes.pop_back();
    EXPECT_EQ(Read(bytes, info), -20);
}

TEST(Mp3Info, NoSyncWordIsRefused)
{
    Mp3FileInfo info;
    EXPECT_EQ(Read(Bytes().Fill(5000), info), -20);
    EXPECT_EQ(info.fileBytes, 5000u);
}

TEST(Mp3Info, ARefusedSongKeepsTheTagsThatWereRead)
{
    Bytes bytes("ID3\3");
    bytes.Fill(5).Fill(1, 11).Text("TIT2").Big(1, 4).Fill(2).Text("x").Fill(1000);
    bytes.Text("TAG").Text("Title").Fill(120);
    Mp3FileInfo info;
    EXPECT_EQ(Read(bytes, info), -20);
    EXPECT_EQ(info.fileBytes, bytes.size());
    EXPECT_EQ(info.id3v2TagBytes, 11u);
    EXPECT_EQ(info.id3v2Frames.GetCount(), 1);
    EXPECT_STREQ(info.id3v1.title, "Title");
    EXPECT_EQ(info.durationMs, 0u);
}

TEST(Mp3Info, ASyncWordInTheLastTenBytesOfTheTagIsTheFirst)
{
    const auto song = [](std::size_t offset) { // a false sync word there, in a tag of 110 bytes with its header
        Bytes bytes("ID3\3");
        bytes.Fill(5).Fill(1, 100).Fill(100).Big(kFrame128, 4).Fill(1000);
        bytes[offset] = std::byte{ 0xFF };
        bytes[offset + 1] = std::byte{ 0xE0 };
        return bytes;
    };
    Mp3FileInfo info;
    EXPECT_EQ(Read(song(100), info), -20);
    EXPECT_EQ(Read(song(99), info), 0); // the search starts behind its first byte
}

TEST(Mp3Info, AXingHeaderIsToldOfARefusedFrameToo)
{
    Bytes bytes;
    bytes.Big(0xFFFD9004, 4).Fill(32).Text("Xing").Big(1, 4).Big(1000, 4).Fill(1000); // Layer II
    Mp3FileInfo info;
    EXPECT_EQ(Read(bytes, info), -20);
    EXPECT_EQ(info.isConstantBitRate, 0u);
    EXPECT_EQ(info.durationMs, 0u);
}

TEST(Mp3Info, AXingHeaderInItsOnePlaceCountsWhateverTheFrame)
{
    Bytes bytes;
    bytes.Big(0xFFF390C4, 4).Fill(32).Text("Xing").Big(1, 4).Big(1000, 4).Fill(1000); // MPEG-2, mono
    Mp3FileInfo info;
    EXPECT_EQ(Read(bytes, info), 0);
    EXPECT_EQ(info.durationMs, 26'122u);
    Bytes ofMono;
    ofMono.Big(0xFFFB90C4, 4).Fill(17).Text("Xing").Big(1, 4).Big(1000, 4).Fill(41'700 + 128 - 33); // its own place
    EXPECT_EQ(Read(ofMono, info), 0);
    EXPECT_EQ(info.isConstantBitRate, 1u);
    EXPECT_EQ(info.durationMs, 2612u);
}

TEST(Mp3Info, AXingByteCountBelowTheTagsGivesNoTime)
{
    Bytes bytes;
    bytes.Big(kFrame128, 4).Fill(32).Text("Xing").Big(2, 4).Fill(4).Big(127, 4).Fill(1000);
    Mp3FileInfo info;
    EXPECT_EQ(Read(bytes, info), 0);
    EXPECT_EQ(info.xing.byteCount, 127u);
    EXPECT_EQ(info.xing.frameCount, 0u);
    EXPECT_EQ(info.durationMs, 0u);
}

TEST(Mp3Info, AXingByteCountOfZeroWithoutAFrameCountGivesNoTime)
{
    Bytes bytes;
    bytes.Big(kFrame128, 4).Fill(32).Text("Xing").Big(2, 4).Fill(4).Big(0, 4).Fill(1000);
    Mp3FileInfo info;
    EXPECT_EQ(Read(bytes, info), 0);
    EXPECT_EQ(info.xing.frameCount, 0u);
    EXPECT_EQ(info.xing.tableOfContents[99], 0);
    EXPECT_EQ(info.durationMs, 0u);
}

TEST(FindFirstFrameSync, TellsTheOffsetFromTheStartOfTheFile)
{
    EXPECT_EQ(FirstSync(Bytes().Big(kFrame128, 4)), 0);
    EXPECT_EQ(FirstSync(Bytes().Fill(5).Big(kFrame128, 4)), 5);
}

TEST(FindFirstFrameSync, StartsAtTheTagSizeTenBytesInsideTheTag)
{
    EXPECT_EQ(FirstSync(Bytes().Big(kFrame128, 4).Big(kFrame128, 4), 1), 4);
    EXPECT_EQ(FirstSync(Bytes().Big(kFrame128, 4).Big(kFrame128, 4), 4), 4);
    EXPECT_EQ(FirstSync(Bytes().Big(kFrame128, 4), 100), -1);
}

TEST(FindFirstFrameSync, FindsAWordAcrossEveryBlockEdge)
{
    for (std::size_t offset = 250; offset < 260; ++offset)
        EXPECT_EQ(FirstSync(Bytes().Fill(offset).Big(kFrame128, 4).Fill(9)), static_cast<std::int64_t>(offset));
    for (std::size_t offset = 4080; offset < 4110; ++offset)
        EXPECT_EQ(FirstSync(Bytes().Fill(offset).Big(kFrame128, 4).Fill(9)), static_cast<std::int64_t>(offset));
    for (std::size_t offset = 4340; offset < 4360; ++offset)
        EXPECT_EQ(FirstSync(Bytes().Fill(offset).Big(kFrame128, 4)), static_cast<std::int64_t>(offset));
}

TEST(FindFirstFrameSync, NeedsFourBytes)
{
    Bytes bytes;
    bytes.Fill(4093).Fill(3, 0xFF);
    EXPECT_EQ(FirstSync(bytes), -1);
    EXPECT_EQ(FirstSync(bytes.Fill(1)), 4093);
    EXPECT_EQ(FirstSync(Bytes("\xFF\xFB\x90")), -1);
    EXPECT_EQ(FirstSync(Bytes()), -1);
}

TEST(Mp3Reader, OpensASongOfTheDevice)
{
    ScratchDevice device;
    device.WriteFile("user/scratch/song.mp3", cardsong::test::SampleText("mp3/vbr_id3v2.mp3"));
    const WString path = device.Path(TEXT("song.mp3"));
    const auto info = Mp3Reader().OpenMp3Info(path.c_str());
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(WString(info->path), path);
    EXPECT_EQ(info->durationMs, 339u);
    EXPECT_EQ(info->id3v2Frames.GetCount(), 6);
    const auto brief = Mp3Reader().OpenMp3Info(path.c_str(), TagFrames::Skip);
    ASSERT_NE(brief, nullptr);
    EXPECT_EQ(brief->durationMs, 339u);
    EXPECT_EQ(brief->id3v2Frames.GetCount(), 0);
}

TEST(Mp3Reader, YieldsNothingForAMissingFileOrOneThatIsNoSong)
{
    ScratchDevice device;
    device.WriteFile("user/scratch/text.mp3", "no song");
    EXPECT_EQ(Mp3Reader().OpenMp3Info(device.Path(TEXT("missing.mp3")).c_str()), nullptr);
    EXPECT_EQ(Mp3Reader().OpenMp3Info(device.Path(TEXT("text.mp3")).c_str()), nullptr);
    EXPECT_EQ(Mp3Reader().OpenMp3Info(nullptr), nullptr);
}

} // namespace
