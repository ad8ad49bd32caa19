// What is taken for a run of MPEG audio frames.
#include "playback/mpeg_sync.h"

#include "tests/playback/mpeg_builder.h"

#include <gtest/gtest.h>

using namespace cardsong::test;
using cardsong::playback::ByteRange;
using cardsong::playback::FindMpegRun;
using cardsong::playback::FrameAt;
using cardsong::playback::MpegRun;
using cardsong::playback::ParseMpegHeader;

namespace {

constexpr std::size_t kProof = 8; // frames that prove a run of any layer

class MpegSync : public testing::Test {
protected:
    // Searched from the file's first byte to its last.
    std::optional<MpegRun> Find(const std::string& bytes)
    {
        const auto file = m_files.Open(bytes);
        return FindMpegRun(*file, { 0, bytes.size() }, 0, bytes.size());
    }

    SongFileTest m_files;
};

TEST(MpegHeader, TellsTheLengthOfAFrameInBytesAndInTime)
{
    for (const FrameKind& kind : kFrameKinds) {
        SCOPED_TRACE(kind.name);
        const auto header = ParseMpegHeader(WordOf(kind.header));
        ASSERT_TRUE(header);
        EXPECT_EQ(header->frameBytes, kind.frameBytes);
        EXPECT_NEAR(header->Seconds() * 1000.0, kind.frameMs, 0.0001);
    }
}

TEST(MpegHeader, TellsTheChannels)
{
    EXPECT_EQ(ParseMpegHeader(WordOf(kMpeg1Layer3.header))->channels, 2U);
    EXPECT_EQ(ParseMpegHeader(WordOf(kMpeg1Mono.header))->channels, 1U);
}

TEST(MpegHeader, PaddingOfLayer1IsFourBytes)
{
    EXPECT_EQ(ParseMpegHeader(0xFFFFC200)->frameBytes, 420U);
}

TEST(MpegHeader, FreeBitRateTellsNoLength)
{
    const auto header = ParseMpegHeader(0xFFFB0200);
    ASSERT_TRUE(header);
    EXPECT_EQ(header->frameBytes, 0U);
    EXPECT_EQ(header->paddingBytes, 1U);
}

TEST(MpegHeader, ForbiddenFieldsMakeNone)
{
    constexpr std::uint32_t forbidden[] = {
        0xFFEB9000, // version 1 is reserved
        0xFFF99000, // layer 0 is reserved
        0xFFFBF000, // bit rate 15
        0xFFFB9C00, // sample rate 3
        0xFFFB9002, // emphasis 2
        0xFFDB9000, // a bit of the sync word missing
    };
    for (const std::uint32_t word : forbidden)
        EXPECT_FALSE(ParseMpegHeader(word)) << std::hex << word;
}

TEST_F(MpegSync, FramesThatFollowEachOtherAreFoundInEveryLayerBehindOtherBytes)
{
    for (const FrameKind& kind : kFrameKinds) {
        for (const std::size_t before : { 0U, 1U, 1000U, 40000U }) {
            SCOPED_TRACE(std::string(kind.name) + " behind " + std::to_string(before));
            const auto run = Find(std::string(before, '\x55') + Frames(kind, kProof) + std::string(5000, '\x55'));
            ASSERT_TRUE(run);
            EXPECT_EQ(run->offset, before);
            EXPECT_EQ(run->word, WordOf(kind.header));
        }
    }
}

TEST_F(MpegSync, ThreeFramesOfLayer3AreProofAndTwoAreNone)
{
    const std::string before(10, '\x55'), behind(5000, '\x55');
    EXPECT_TRUE(Find(before + Frames(kMpeg1Layer3, 3) + behind));
    EXPECT_FALSE(Find(before + Frames(kMpeg1Layer3, 2) + behind));
    EXPECT_FALSE(Find(before + Frames(kMpeg1Layer3, 1) + behind));
}

TEST_F(MpegSync, FewerFramesAreProofWhereTheyAreAllThereIs)
{
    EXPECT_TRUE(Find(Frames(kMpeg1Layer3, 2)));
    EXPECT_TRUE(Find(Frames(kMpeg1Layer3, 1)));
    EXPECT_TRUE(Find(Frames(kMpeg1Layer3, 1) + Frame(kMpeg1Layer3).substr(0, 100))) << "the last one is cut";
    EXPECT_FALSE(Find(Frame(kMpeg1Layer3).substr(0, 416))) << "the only one is cut";
    EXPECT_FALSE(Find('\x55' + Frames(kMpeg1Layer3, 2))) << "something stands in front";
    EXPECT_FALSE(Find(Frames(kMpeg1Layer3, 2) + std::string(5000, '\x55'))) << "something stands behind";
}

TEST_F(MpegSync, NextFrameHasToStandWhereTheFrameEnds)
{
    const std::string frame = Frame(kMpeg1Layer3);
    EXPECT_FALSE(Find(frame + '\0' + frame + '\0' + frame + '\0' + frame));
}

TEST_F(MpegSync, FramesOfOneRunAreOfOneKind)
{
    const std::string layer2 = Frame(kFrameKinds[5]);
    EXPECT_FALSE(Find(Frames(kMpeg1Layer3, 2) + layer2 + Frames(kMpeg1Layer3, 2) + layer2));
    EXPECT_TRUE(Find(Frame(kMpeg1Layer3) + Frame(kMpeg1Padded) + Frame(kMpeg1At64) + std::string(9000, 'x')))
        << "the bit rate may vary";
}

TEST_F(MpegSync, FreeBitRateIsKnownByTheDistanceOfItsFrames)
{
    // Two bytes of padding in turn, as the sample rate asks for.
    const FrameKind bare = { "free", { 0xFF, 0xFB, 0x00, 0x00 }, 2089, 0 };
    const FrameKind padded = { "free", { 0xFF, 0xFB, 0x02, 0x00 }, 2090, 0 };
    const std::string song = Frame(bare) + Frame(padded) + Frame(padded) + Frame(bare);
    for (const std::size_t before : { 0U, 777U }) {
        const std::string bytes = std::string(before, 'x') + song;
        const auto file = m_files.Open(bytes);
        const auto run = FindMpegRun(*file, { 0, bytes.size() }, 0, bytes.size());
        ASSERT_TRUE(run);
        EXPECT_EQ(run->offset, before);
        EXPECT_EQ(run->freeBytes, 2089U);
        EXPECT_EQ(FrameAt(*file, *run, before, bytes.size())->frameBytes, 2089U);
        EXPECT_EQ(FrameAt(*file, *run, before + 2089, bytes.size())->frameBytes, 2090U);
    }
}

TEST_F(MpegSync, FreeBitRateAtTheEndOfTheFileIsAllThereIs)
{
    const FrameKind free = { "free", { 0xFF, 0xFB, 0x00, 0x00 }, 1000, 0 };
    EXPECT_TRUE(Find(Frames(free, 2)));
    EXPECT_FALSE(Find(Frames(free, 1))) << "its length is not known";
}

TEST_F(MpegSync, FrameThatNoEncoderWritesIsNoProof)
{
    // Layer III: more big values than there are samples, in the first granule of each frame.
    std::string frames = Frames(kMpeg1Layer3, 4);
    for (std::size_t at = 0; at < frames.size(); at += 417)
        frames.replace(at + 4 + 2, 4, 4, '\xFF');
    EXPECT_FALSE(Find(frames));
    // Layer I: an allocation of 15.
    frames = Frames(kFrameKinds[6], 8);
    for (std::size_t at = 0; at < frames.size(); at += 416)
        frames[at + 10] = '\xF0';
    EXPECT_FALSE(Find(frames));
    // Layer II: 32 kb/s is for one channel.
    EXPECT_FALSE(Find(Frames({ "", { 0xFF, 0xFD, 0x10, 0x00 }, 104, 0 }, 8)));
    EXPECT_TRUE(Find(Frames({ "", { 0xFF, 0xFD, 0x10, 0xC0 }, 104, 0 }, 8)));
}

// The channels of joint stereo share what lies above the bound: 2 x 4 and 28 fields, 18 bytes.
TEST_F(MpegSync, AllocationsOfJointStereoEndWithTheSharedOnes)
{
    const FrameKind joint = { "layer I, joint stereo", { 0xFF, 0xFF, 0xC0, 0x40 }, 416, 384 / 44.1 };
    std::string frame = Frame(joint);
    frame[4 + 18] = '\xF0';
    std::string frames;
    for (int i = 0; i < 8; ++i)
        frames += frame;
    EXPECT_TRUE(Find(frames));
    for (std::size_t at = 0; at < frames.size(); at += 416)
        frames[at + 4 + 17] = '\x0F';
    EXPECT_FALSE(Find(frames));
}

// Of the side information the first granule's flag of a switched window is bit 53; two bits of the block's type, one of
// mixed blocks and two tables of five bits follow.
TEST_F(MpegSync, TablesOfASwitchedWindowAreThoseOfTheStandard)
{
    std::string frame = Frame(kMpeg1Layer3);
    frame[4 + 6] = '\x06';
    for (const auto& [tables, isWritten] :
         { std::pair{ '\x00', true }, { '\x80', true }, { '\x20', true }, { '\x10', false }, { '\x90', false } }) {
        frame[4 + 7] = tables;
        EXPECT_EQ(Find(frame + frame + frame + frame).has_value(), isWritten) << static_cast<int>(tables);
    }
}

TEST_F(MpegSync, MainDataHasToFitTheFrameAndWhatItBorrows)
{
    // The first granule's first channel claims 4095 bits, 512 bytes: more than the 381 that a frame of 417 holds.
    // Side information: 9 bits of borrowed bytes, 11 of no interest, then 12 of the length.
    std::string frame = Frame(kMpeg1Layer3);
    frame[6] = '\x0F';
    frame[7] = '\xFF';
    EXPECT_FALSE(Find(frame + frame + frame + frame));
    frame[4] = '\x7F'; // 255 bytes borrowed
    EXPECT_TRUE(Find(frame + frame + frame + frame));
}

TEST_F(MpegSync, SearchEndsWhereItsReachDoes)
{
    const std::string bytes = std::string(5000, 'x') + Frames(kMpeg1Layer3, 4);
    const auto file = m_files.Open(bytes);
    EXPECT_FALSE(FindMpegRun(*file, { 0, bytes.size() }, 0, 5000));
    EXPECT_TRUE(FindMpegRun(*file, { 0, bytes.size() }, 0, 5001));
}

TEST_F(MpegSync, RangeEndsWhatIsLookedAt)
{
    const std::string bytes = Frames(kMpeg1Layer3, 4);
    const auto file = m_files.Open(bytes);
    const auto run = FindMpegRun(*file, { 0, bytes.size() - 1 }, 0, bytes.size());
    ASSERT_TRUE(run);
    EXPECT_TRUE(FrameAt(*file, *run, 834, bytes.size() - 1));
    EXPECT_FALSE(FrameAt(*file, *run, 1251, bytes.size() - 1)) << "its last byte lies behind the range";
}

TEST_F(MpegSync, CancelledSearchFindsNothing)
{
    const std::string bytes = Frames(kMpeg1Layer3, 4);
    const auto file = m_files.Open(bytes);
    const std::atomic<bool> isCancelled = true;
    EXPECT_FALSE(FindMpegRun(*file, { 0, bytes.size() }, 0, bytes.size(), &isCancelled));
}

TEST_F(MpegSync, RunsOfOneByteAreNoSong)
{
    for (unsigned value = 0; value < 256; ++value)
        EXPECT_FALSE(Find(std::string(5000, static_cast<char>(value)))) << value;
}

TEST_F(MpegSync, ProgramsAreNoSong)
{
    for (const char* program : { "/bin/true", "/bin/sh", "/bin/ls", "/bin/cat" }) {
        std::ifstream file(program, std::ios::binary);
        EXPECT_FALSE(Find({ std::istreambuf_iterator<char>(file), {} })) << program;
    }
}

} // namespace
