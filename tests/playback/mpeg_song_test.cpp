// How long an MPEG song lasts, and which frames it gives from which place on.
#include "playback/mpeg_song.h"

#include "playback/mpeg_info_frame.h"
#include "tests/playback/mpeg_builder.h"

#include <gtest/gtest.h>

using namespace cardsong::test;
using cardsong::playback::MpegSong;

namespace {

constexpr double kFrameSeconds = 1152 / 44100.0;

class MpegSongTest : public testing::Test {
protected:
    // Bytes and time of each frame from where the song stands.
    static std::vector<double> Starts(MpegSong& song)
    {
        std::vector<double> starts;
        while (const auto frame = song.Next()) {
            EXPECT_NEAR(frame->endSeconds - frame->startSeconds, kFrameSeconds, 1e-9);
            starts.push_back(frame->startSeconds);
        }
        return starts;
    }

    SongFileTest m_files;
};

// The first frame of a song that says how long it is. `at`: the word's place in the frame.
std::string InfoFrame(const FrameKind& kind, std::size_t at, const std::string& content)
{
    return Frame(kind).replace(at, content.size(), content);
}

std::string Xing(std::uint32_t frames, std::uint32_t bytes)
{
    return "Xing" + BigEndian(3, 4) + BigEndian(frames, 4) + BigEndian(bytes, 4);
}

constexpr std::size_t kXingAt = 4 + 32; // in a frame of MPEG-1 stereo

// Frames of 128 kb/s and of 64 kb/s in turn.
std::string VaryingFrames(std::size_t pairs)
{
    std::string frames;
    for (std::size_t i = 0; i < pairs; ++i)
        frames += Frame(kMpeg1Layer3) + Frame(kMpeg1At64);
    return frames;
}

TEST_F(MpegSongTest, FileWithoutARunIsNoSong)
{
    EXPECT_EQ(MpegSong::Open(nullptr), nullptr);
    EXPECT_EQ(m_files.OpenSong(""), nullptr);
    EXPECT_EQ(m_files.OpenSong(std::string(100000, 'x')), nullptr);
}

TEST_F(MpegSongTest, RunHasToBeginWithinAMegabyte)
{
    constexpr std::size_t kReach = 1024 * 1024;
    EXPECT_NE(m_files.OpenSong(std::string(kReach - 1, 'x') + Frames(kMpeg1Layer3, 9)), nullptr);
    EXPECT_EQ(m_files.OpenSong(std::string(kReach, 'x') + Frames(kMpeg1Layer3, 9)), nullptr);
}

TEST_F(MpegSongTest, ConstantBitRateIsMeasuredByTheBytes)
{
    const auto song = m_files.OpenSong(Frames(kMpeg1Layer3, 3000));
    ASSERT_NE(song, nullptr);
    EXPECT_NEAR(song->Seconds(), 3000 * kFrameSeconds, 1e-9) << "no frame is padded";
}

TEST_F(MpegSongTest, ConstantBitRateWithPaddingIsMeasuredByTheRate)
{
    std::string frames; // 417.959 bytes a frame
    double due = 0.0;
    for (int i = 0; i < 3000; ++i) {
        due += 144 * 128000 / 44100.0;
        frames += Frame(static_cast<double>(frames.size()) + 417.5 < due ? kMpeg1Padded : kMpeg1Layer3);
    }
    const auto song = m_files.OpenSong(frames);
    ASSERT_NE(song, nullptr);
    EXPECT_NEAR(song->Seconds(), 3000 * kFrameSeconds, kFrameSeconds / 2);
}

TEST_F(MpegSongTest, VaryingBitRateIsCounted)
{
    const auto song = m_files.OpenSong(VaryingFrames(1000));
    ASSERT_NE(song, nullptr);
    EXPECT_NEAR(song->Seconds(), 2000 * kFrameSeconds, 1e-6);
}

TEST_F(MpegSongTest, FreeBitRateIsCounted)
{
    const auto song = m_files.OpenSong(Frames({ "free", { 0xFF, 0xFB, 0x00, 0x00 }, 2000, 0 }, 100));
    ASSERT_NE(song, nullptr);
    EXPECT_NEAR(song->Seconds(), 100 * kFrameSeconds, 1e-6);
}

TEST_F(MpegSongTest, BitRateThatOnlyBeginsConstantIsCounted)
{
    const auto song = m_files.OpenSong(Frames(kMpeg1Layer3, 500) + Frames(kMpeg1At64, 500));
    ASSERT_NE(song, nullptr);
    EXPECT_NEAR(song->Seconds(), 1000 * kFrameSeconds, 1e-6);
}

TEST_F(MpegSongTest, SongThatTellsItsLengthIsBelieved)
{
    const std::string sound = VaryingFrames(10);
    const auto bytes = static_cast<std::uint32_t>(sound.size() + 417);
    const auto song = m_files.OpenSong(InfoFrame(kMpeg1Layer3, kXingAt, Xing(21, bytes)) + sound);
    ASSERT_NE(song, nullptr);
    EXPECT_NEAR(song->Seconds(), 21 * kFrameSeconds, 1e-9);
    EXPECT_EQ(Starts(*song).size(), 20U) << "the frame that tells is no sound";
}

TEST_F(MpegSongTest, ToldLengthOfACutSongIsNotBelieved)
{
    const std::string sound = VaryingFrames(1000);
    const auto bytes = static_cast<std::uint32_t>(sound.size() + 417);
    const auto song =
        m_files.OpenSong(InfoFrame(kMpeg1Layer3, kXingAt, Xing(2000, bytes)) + sound.substr(0, sound.size() / 2));
    ASSERT_NE(song, nullptr);
    EXPECT_NEAR(song->Seconds(), 1000 * kFrameSeconds, kFrameSeconds);
}

TEST_F(MpegSongTest, ToldLengthThatNoFileCouldHoldIsNotBelieved)
{
    const std::string told = "Xing" + BigEndian(1, 4) + BigEndian(0xFFFFFFFF, 4);
    const auto song = m_files.OpenSong(InfoFrame(kMpeg1Layer3, kXingAt, told) + VaryingFrames(50));
    ASSERT_NE(song, nullptr);
    EXPECT_NEAR(song->Seconds(), 100 * kFrameSeconds, 1e-6);
}

TEST_F(MpegSongTest, FrameThatTellsAndNoSoundIsNoSong)
{
    EXPECT_EQ(m_files.OpenSong(InfoFrame(kMpeg1Layer3, kXingAt, Xing(100, 41700))), nullptr);
}

TEST_F(MpegSongTest, TagsAreNoPartOfTheLength)
{
    const std::string sound = Frames(kMpeg1Layer3, 2000);
    const auto song = m_files.OpenSong(Id3Tag(300000, '\xFF') + sound + "TAG" + std::string(125, '\xFB'));
    ASSERT_NE(song, nullptr);
    EXPECT_NEAR(song->Seconds(), 2000 * kFrameSeconds, 1e-9);
}

TEST_F(MpegSongTest, FramesComeWholeAndOneAfterTheOther)
{
    const auto song = m_files.OpenSong(VaryingFrames(2));
    ASSERT_NE(song, nullptr);
    const std::size_t sizes[] = { 417, 208, 417, 208 };
    for (int i = 0; i < 4; ++i) {
        const auto frame = song->Next();
        ASSERT_TRUE(frame);
        EXPECT_EQ(frame->bytes.size(), sizes[i]);
        EXPECT_EQ(frame->bytes[0], 0xFF);
        EXPECT_NEAR(frame->startSeconds, i * kFrameSeconds, 1e-9);
    }
    EXPECT_FALSE(song->Next());
    EXPECT_FALSE(song->HasFailed());
}

TEST_F(MpegSongTest, JunkBetweenFramesTakesNoTime)
{
    const auto song = m_files.OpenSong(Frames(kMpeg1Layer3, 5) + std::string(3000, 'x') + Frames(kMpeg1Layer3, 5));
    ASSERT_NE(song, nullptr);
    EXPECT_EQ(Starts(*song).size(), 10U);
}

TEST_F(MpegSongTest, SongOfAnotherSampleRateMayFollowInTheSameFile)
{
    const auto song = m_files.OpenSong(Frames(kMpeg1Layer3, 100) + Frames(kFrameKinds[4], 100));
    ASSERT_NE(song, nullptr);
    EXPECT_NEAR(song->Seconds(), 100 * kFrameSeconds + 100 * 0.024, 1e-6);
}

// Whatever the bit rate does: the frames from a place on are those of the whole song, begin a little before the place
// and leave none out.
TEST_F(MpegSongTest, EveryPlaceIsReachedWithTheFramesThatItsDecoderNeeds)
{
    const std::string songs[] = { Frames(kMpeg1Layer3, 1500), VaryingFrames(750) };
    for (const std::string& bytes : songs) {
        const auto song = m_files.OpenSong(bytes);
        ASSERT_NE(song, nullptr);
        const auto all = Starts(*song);
        ASSERT_EQ(all.size(), 1500U);
        for (const double place : { 30.0, 0.0, 0.01, 5.0, 39.0, 12.345, 39.18 }) {
            song->GoTo(place);
            const auto starts = Starts(*song);
            ASSERT_FALSE(starts.empty()) << place;
            EXPECT_NEAR(starts.front(), std::max(0.0, place - 12 * kFrameSeconds), kFrameSeconds + 1e-6) << place;
            EXPECT_LE(starts.front(), std::max(0.0, place - 10 * kFrameSeconds)) << place;
            EXPECT_NEAR(starts.back(), all.back(), 1e-6) << place;
        }
    }
}

TEST_F(MpegSongTest, PlacePastTheEndLeavesNothingToHear)
{
    const auto song = m_files.OpenSong(VaryingFrames(100));
    ASSERT_NE(song, nullptr);
    song->GoTo(1e9);
    EXPECT_FALSE(song->Next());
    song->GoTo(-5.0);
    EXPECT_EQ(Starts(*song).size(), 200U);
}

TEST_F(MpegSongTest, CancelledSearchGivesNoFrameUntilItIsTakenBack)
{
    const auto song = m_files.OpenSong(Frames(kMpeg1Layer3, 5) + std::string(30000, 'x') + Frames(kMpeg1Layer3, 5));
    ASSERT_NE(song, nullptr);
    song->Cancel();
    EXPECT_EQ(Starts(*song).size(), 5U);
    song->TakeCancelBack();
    EXPECT_EQ(Starts(*song).size(), 5U);
}

TEST_F(MpegSongTest, FileThatShrinksMeanwhileFailsInPlaceOfEnding)
{
    const auto song = m_files.OpenSong(Frames(kMpeg1Layer3, 1000));
    ASSERT_NE(song, nullptr);
    ASSERT_TRUE(song->Next());
    std::filesystem::resize_file(m_files.Path(), 1000);
    EXPECT_LT(Starts(*song).size(), 200U) << "what had been read before may still come";
    EXPECT_TRUE(song->HasFailed());
}

// ---- the frame that tells ----

using cardsong::playback::Bytes;
using cardsong::playback::MpegInfo;
using cardsong::playback::ParseMpegHeader;

std::optional<MpegInfo> ReadInfo(const FrameKind& kind, const std::string& frame)
{
    return ReadMpegInfo(Bytes(reinterpret_cast<const unsigned char*>(frame.data()), frame.size()),
                        *ParseMpegHeader(WordOf(kind.header)));
}

TEST(MpegInfoFrame, StandsBehindTheSideInformationOfItsKind)
{
    const FrameKind mpeg2 = { "", { 0xFF, 0xF3, 0x90, 0x00 }, 261, 0 };
    const FrameKind mpeg2Mono = { "", { 0xFF, 0xF3, 0x90, 0xC0 }, 261, 0 };
    const std::pair<FrameKind, std::size_t> places[] = {
        { kMpeg1Layer3, 36 }, { kMpeg1Mono, 21 }, { mpeg2, 21 }, { mpeg2Mono, 13 }
    };
    for (const auto& [kind, at] : places) {
        const auto info = ReadInfo(kind, InfoFrame(kind, at, Xing(1234, 567890)));
        ASSERT_TRUE(info) << at;
        EXPECT_EQ(info->frames, 1234U);
        EXPECT_EQ(info->bytes, 567890U);
        EXPECT_FALSE(ReadInfo(kind, InfoFrame(kind, at + 1, Xing(1, 2)))) << at;
        EXPECT_TRUE(ReadInfo(kind, InfoFrame(kind, at + 2, Xing(1, 2)))) << "behind a checksum";
    }
}

TEST(MpegInfoFrame, TellsOnlyWhatItsFlagsPromise)
{
    const std::string numbers = BigEndian(77, 4) + BigEndian(88, 4);
    const std::pair<std::uint32_t, std::pair<std::uint32_t, std::uint32_t>> cases[] = {
        { 0, { 0, 0 } }, { 1, { 77, 0 } }, { 2, { 0, 77 } }, { 3, { 77, 88 } }, { 15, { 77, 88 } }
    };
    for (const auto& [flags, told] : cases) {
        const auto info =
            ReadInfo(kMpeg1Layer3, InfoFrame(kMpeg1Layer3, kXingAt, "Info" + BigEndian(flags, 4) + numbers));
        ASSERT_TRUE(info) << flags;
        EXPECT_EQ(info->frames, told.first) << flags;
        EXPECT_EQ(info->bytes, told.second) << flags;
    }
}

TEST(MpegInfoFrame, OtherEncodersWriteTheirsAtAFixedPlace)
{
    // Version, delay, quality, bytes, frames.
    const std::string content =
        "VBRI" + BigEndian(1, 2) + BigEndian(2, 2) + BigEndian(3, 2) + BigEndian(444, 4) + BigEndian(55, 4);
    const auto info = ReadInfo(kMpeg1Mono, InfoFrame(kMpeg1Mono, 36, content));
    ASSERT_TRUE(info);
    EXPECT_EQ(info->bytes, 444U);
    EXPECT_EQ(info->frames, 55U);
}

TEST(MpegInfoFrame, CutShortTellsNothingBehindTheCut)
{
    const std::string frame = InfoFrame(kMpeg1Layer3, kXingAt, Xing(1234, 5678)).substr(0, kXingAt + 12);
    const auto info = ReadInfo(kMpeg1Layer3, frame);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->frames, 1234U);
    EXPECT_EQ(info->bytes, 0U);
}

TEST(MpegInfoFrame, SoundAndOtherLayersTellNothing)
{
    EXPECT_FALSE(ReadInfo(kMpeg1Layer3, Frame(kMpeg1Layer3)));
    EXPECT_FALSE(ReadInfo(kFrameKinds[5], InfoFrame(kFrameKinds[5], kXingAt, Xing(1, 2))));
}

} // namespace
