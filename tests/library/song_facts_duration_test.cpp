// The play time of one song in whole seconds.
#include "library/song_facts.h"

#include "tests/library/songs.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::Bytes;
using cardsong::test::SampleText;
using cardsong::test::ScratchDevice;
using cardsong::test::SongOfFrames;
using cardsong::test::SongOfTenSeconds;

class ReadSongDuration : public testing::Test {
protected:
    std::uint32_t Mp3(const std::string& bytes) { return Read("song.mp3", bytes, true); }
    // A song that ends behind its File Properties Object, before any Data Object.
    std::uint32_t Wma(std::uint64_t playDuration, std::uint32_t prerollMs, std::uint32_t flags = 0)
    {
        Bytes song(SampleText("wma/properties_cut_short.wma").substr(0, 46)); // the header and the object's name
        song.Little(24 + 80, 8).Fill(40).Little(playDuration, 8).Fill(8).Little(prerollMs, 4).Fill(4);
        song.Little(flags, 4).Fill(12);
        return Read("song.wma", { reinterpret_cast<const char*>(song.data()), song.size() }, false);
    }
    ScratchDevice device;

private:
    std::uint32_t Read(const std::string& name, const std::string& bytes, bool isMp3)
    {
        device.WriteFile("user/scratch/" + name, bytes);
        return ReadSongDurationSeconds(device.Path(WString(name.begin(), name.end()).c_str()).c_str(), isMp3);
    }
};

TEST_F(ReadSongDuration, OfAnMp3SongIsTruncated)
{
    EXPECT_EQ(Mp3(SongOfFrames(382)), 9u);  // 9,978 ms
    EXPECT_EQ(Mp3(SongOfFrames(383)), 10u); // 10,004 ms
    EXPECT_EQ(Mp3(SongOfFrames(38)), 0u);
}

TEST_F(ReadSongDuration, OfAnMp3ThatIsNoSongIsZero)
{
    EXPECT_EQ(Mp3("no song"), 0u);
    EXPECT_EQ(Mp3(""), 0u);
}

TEST_F(ReadSongDuration, OfAWmaSongIsItsPlayTimeLessThePrerollTruncated)
{
    EXPECT_EQ(Wma(100'000'000, 3000), 7u);
    EXPECT_EQ(Wma(109'999'999, 3000), 7u);
    EXPECT_EQ(Wma(110'000'000, 3000), 8u);
}

TEST_F(ReadSongDuration, OfAWmaBroadcastIsZero)
{
    EXPECT_EQ(Wma(100'000'000, 3000, 1), 0u);
}

TEST_F(ReadSongDuration, OfAWmaSongWrapsAfter429Seconds)
{
    EXPECT_EQ(Wma(4'294'967'295, 0), 429u);
    EXPECT_EQ(Wma(4'294'967'296, 0), 0u);
    EXPECT_EQ(Wma(5'000'000'000, 0), 70u); // 500 s less 429.4967296 s
}

TEST_F(ReadSongDuration, OfAWmaSongWithAPrerollLongerThanItsPlayTimeWrapsToo)
{
    EXPECT_EQ(Wma(0, 1), 429u);
}

TEST_F(ReadSongDuration, OfAMissingFileIsZero)
{
    EXPECT_EQ(ReadSongDurationSeconds(device.Path(TEXT("missing.mp3")).c_str(), true), 0u);
    EXPECT_EQ(ReadSongDurationSeconds(device.Path(TEXT("missing.wma")).c_str(), false), 0u);
    EXPECT_EQ(ReadSongDurationSeconds(nullptr, true), 0u);
    EXPECT_EQ(ReadSongDurationSeconds(nullptr, false), 0u);
}

TEST_F(ReadSongDuration, ASongIsOpenedWhateverTheCaseOfItsLetters)
{
    device.WriteFile("user/scratch/Song Two.MP3", SongOfTenSeconds());
    EXPECT_EQ(ReadSongDurationSeconds(device.Path(TEXT("song two.mp3")).c_str(), true), 10u);
    EXPECT_EQ(ReadSongDurationSeconds(device.Path(TEXT("SONG TWO.Mp3")).c_str(), true), 10u);
}

// What its name says is not looked at.
TEST_F(ReadSongDuration, OfASongOfTheOtherKindIsZero)
{
    device.WriteFile("user/scratch/song.wma", SongOfTenSeconds());
    EXPECT_EQ(ReadSongDurationSeconds(device.Path(TEXT("song.wma")).c_str(), false), 0u);
    EXPECT_EQ(ReadSongDurationSeconds(device.Path(TEXT("song.wma")).c_str(), true), 10u);
}

} // namespace
