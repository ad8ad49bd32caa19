#include "library/song_title.h"

#include "tests/platform/scratch_device.h"
#include "tests/tags/bytes.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::SampleText;
using cardsong::test::ScratchDevice;

class SongTitle : public testing::Test {
protected:
    // The title of a song in the card's folder "Music".
    WString Of(const WString& name, std::uint32_t number = 7)
    {
        WString title = TEXT("before");
        EXPECT_EQ(GetSongDisplayTitle((TEXT("\\SDMMC\\Music\\") + name).c_str(), title, number), 1);
        return title;
    }
    // A song whose ID3v1 title is these bytes.
    void WriteTitled(const std::string& title)
    {
        std::string song = SampleText("mp3/cbr_id3v1.mp3");
        song.replace(song.size() - 125, 30, title + std::string(30 - title.size(), 0));
        device.WriteFile("card/Music/song.mp3", song);
    }

    ScratchDevice device;
};

TEST_F(SongTitle, OfAMissingFileIsItsName)
{
    EXPECT_EQ(Of(TEXT("Yesterday.mp3")), TEXT("07.Yesterday"));
    EXPECT_EQ(Of(TEXT("Yesterday.wma")), TEXT("07.Yesterday"));
    EXPECT_EQ(Of(TEXT("Yesterday.ogg")), TEXT("07.Yesterday"));
}

TEST_F(SongTitle, HasANumberOfTwoDigitsAtLeast)
{
    EXPECT_EQ(Of(TEXT("x.mp3"), 0), TEXT("00.x"));
    EXPECT_EQ(Of(TEXT("x.mp3"), 9), TEXT("09.x"));
    EXPECT_EQ(Of(TEXT("x.mp3"), 10), TEXT("10.x"));
    EXPECT_EQ(Of(TEXT("x.mp3"), 123), TEXT("123.x"));
}

TEST_F(SongTitle, OfGb2312IsConverted)
{
    WriteTitled("AB\xC4\xE3\xBA\xC3");
    EXPECT_EQ(Of(TEXT("song.mp3")), TEXT("07.AB\x4F60\x597D"));
}

TEST_F(SongTitle, OfGb2312MayFillItsField)
{
    std::string title;
    for (int i = 0; i < 15; ++i)
        title += "\xB0\xA1";
    WriteTitled(title);
    EXPECT_EQ(Of(TEXT("song.mp3")), TEXT("07.") + WString(15, 0x554A));
}

TEST_F(SongTitle, OfBig5IsConverted)
{
    WriteTitled("\xA7\x41\xA6\x6E"); // the same two characters as in GB2312 above
    EXPECT_EQ(Of(TEXT("song.mp3")), TEXT("07.\x4F60\x597D"));
}

TEST_F(SongTitle, OfAsciiIsTheFileName)
{
    WriteTitled("Plain Title");
    EXPECT_EQ(Of(TEXT("song.mp3")), TEXT("07.song"));
}

TEST_F(SongTitle, OfNoTagIsTheFileName)
{
    device.WriteFile("card/Music/song.mp3", SampleText("mp3/cbr_joint_stereo.mp3"));
    EXPECT_EQ(Of(TEXT("song.mp3")), TEXT("07.song"));
}

TEST_F(SongTitle, OfWmaIsItsTitle)
{
    device.WriteFile("card/Music/tagged.wma", SampleText("wma/tagged.wma"));
    EXPECT_EQ(Of(TEXT("Tagged.WMA")), TEXT("07.Song"));
}

TEST_F(SongTitle, OfWmaWithoutATitleIsTheFileName)
{
    device.WriteFile("card/Music/untagged.wma", SampleText("wma/untagged.wma"));
    EXPECT_EQ(Of(TEXT("untagged.wma")), TEXT("07.untagged"));
}

TEST_F(SongTitle, OfWmaThatCannotBeReadToItsDataIsTheFileName)
{
    device.WriteFile("card/Music/torn.wma", SampleText("wma/tagged.wma").substr(0, 700));
    EXPECT_EQ(Of(TEXT("torn.wma")), TEXT("07.torn"));
}

TEST_F(SongTitle, OfAnExtensionAloneIsTheNumber)
{
    EXPECT_EQ(Of(TEXT(".mp3")), TEXT("07."));
}

TEST_F(SongTitle, OfANullPathIsTheNumber)
{
    WString title;
    EXPECT_EQ(GetSongDisplayTitle(nullptr, title, 7), 1);
    EXPECT_EQ(title, TEXT("07."));
}

TEST_F(SongTitle, OfGb2312BeyondTheKnownHanziKeepsItsWidenedBytes)
{
    WriteTitled("\xA1\xA1\xB0\xA1"); // a wide space, which is no hanzi, and one
    EXPECT_EQ(Of(TEXT("song.mp3")), TEXT("07.\xFFA1\xFFA1\x554A"));
}

TEST_F(SongTitle, IsReadWhateverTheCaseOfTheFileName)
{
    WriteTitled("\xC4\xE3\xBA\xC3");
    EXPECT_EQ(Of(TEXT("SONG.Mp3")), TEXT("07.\x4F60\x597D"));
}

TEST_F(SongTitle, OfAnMp3WithoutAFrameIsTheFileName)
{
    std::string block("TAG\xC4\xE3\xBA\xC3");
    block.resize(128);
    device.WriteFile("card/Music/song.mp3", std::string(1000, 'x') + block);
    EXPECT_EQ(Of(TEXT("song.mp3")), TEXT("07.song"));
}

TEST_F(SongTitle, OfAPathWithoutABackslashIsThePathLessItsExtension)
{
    WString title;
    EXPECT_EQ(GetSongDisplayTitle(TEXT("a.b.mp3"), title, 7), 1);
    EXPECT_EQ(title, TEXT("07.a.b"));
}

} // namespace
