#include "library/song_facts.h"

#include "tests/platform/scratch_device.h"
#include "tests/tags/bytes.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::Bytes;
using cardsong::test::SampleText;
using cardsong::test::ScratchDevice;

class SongFactsTest : public testing::Test {
protected:
    SongFacts Mp3(const std::string& bytes)
    {
        m_device.WriteFile("card/song.mp3", bytes);
        return ReadSongFacts(TEXT("\\SDMMC\\song.mp3"), SongFormat::Mp3);
    }
    SongFacts Wma(const std::string& bytes)
    {
        m_device.WriteFile("card/song.wma", bytes);
        return ReadSongFacts(TEXT("\\SDMMC\\song.wma"), SongFormat::Wma);
    }
    WString TitleOfFrame(const std::string& data)
    {
        Bytes tag("ID3");
        tag.Fill(1, 3).Fill(2).Big(0, 3).Big(data.size() + 10, 1);
        tag.Text("TIT2").Big(data.size(), 4).Fill(2).Text(data);
        return Mp3(Text(tag)).title;
    }
    WString TitleOfBlock(std::string title)
    {
        title.resize(30);
        return Mp3(std::string(1000, 'x') + "TAG" + title + std::string(95, '\0')).title;
    }
    static std::string Text(const Bytes& bytes)
    {
        return { reinterpret_cast<const char*>(bytes.data()), bytes.size() };
    }

    ScratchDevice m_device;
};

TEST_F(SongFactsTest, OfAWholeSong)
{
    const SongFacts facts = Mp3(SampleText("mp3/cbr_id3v1.mp3"));
    EXPECT_GT(facts.lengthMs, 0U);
    EXPECT_FALSE(facts.title.empty());
}

TEST_F(SongFactsTest, HalfAUnitAtTheEndOfATitleIsLeftOut)
{
    EXPECT_EQ(TitleOfFrame(std::string("\x01\xFF\xFE"
                                       "A\0B",
                                       6)),
              TEXT("A"));
    EXPECT_EQ(TitleOfFrame(std::string("\x02\0A\0", 4)), TEXT("A"));
}

TEST_F(SongFactsTest, OfAMissingFileAreNone)
{
    const SongFacts facts = ReadSongFacts(TEXT("\\SDMMC\\none.mp3"), SongFormat::Mp3);
    EXPECT_EQ(facts.lengthMs, 0U);
    EXPECT_TRUE(facts.title.empty());
    EXPECT_TRUE(ReadSongFacts(TEXT("\\SDMMC\\none.wma"), SongFormat::Wma).title.empty());
}

TEST_F(SongFactsTest, AnAsciiTitleIsItself)
{
    EXPECT_EQ(TitleOfBlock("Yesterday"), TEXT("Yesterday"));
}

TEST_F(SongFactsTest, AGb2312TitleIsConvertedWithItsRarerCharacters)
{
    EXPECT_EQ(TitleOfBlock("\xB8\xE8\xC7\xFA\xF7\xA8"), TEXT("\x6B4C\x66F2\x9CD5")); // the last lies beyond 0xDDF9
}

TEST_F(SongFactsTest, ABig5TitleIsConverted)
{
    EXPECT_EQ(TitleOfBlock("\xBA\x71\xA6\xB1"), TEXT("\x6B4C\x66F2"));
}

TEST_F(SongFactsTest, BlanksAtTheEndOfATitleAreLeftOut)
{
    EXPECT_EQ(TitleOfBlock("Song       "), TEXT("Song"));
}

TEST_F(SongFactsTest, ATitleFrameMayHaveEachEncoding)
{
    using namespace std::string_literals;
    const WString title = TEXT("\x6B4C");
    EXPECT_EQ(TitleOfFrame("\x00\xB8\xE8\xB8\xE8"s), title + title);
    EXPECT_EQ(TitleOfFrame("\x01\xFF\xFE\x4C\x6B"s), title);
    EXPECT_EQ(TitleOfFrame("\x01\xFE\xFF\x6B\x4C"s), title);
    EXPECT_EQ(TitleOfFrame("\x02\x6B\x4C"s), title);
    EXPECT_EQ(TitleOfFrame("\x03\xE6\xAD\x8C"s), title);
    EXPECT_EQ(TitleOfFrame("\x00"
                           "Caf\xE9"s),
              TEXT("Caf\xE9"));
}

TEST_F(SongFactsTest, ATitleFrameEndsAtItsZero)
{
    using namespace std::string_literals;
    EXPECT_EQ(TitleOfFrame("\x00one\0two"s), TEXT("one"));
    EXPECT_EQ(TitleOfFrame("\x01\xFF\xFEo\0\0\0t\0"s), TEXT("o"));
}

TEST_F(SongFactsTest, ATitleFrameOfNoKnownEncodingOrOfNothingIsNone)
{
    using namespace std::string_literals;
    EXPECT_EQ(TitleOfFrame("\x07one"s), TEXT(""));
    EXPECT_EQ(TitleOfFrame(""s), TEXT(""));
    EXPECT_EQ(TitleOfFrame("\x01"s), TEXT(""));
}

TEST_F(SongFactsTest, TheNewerTagWinsOverTheOlder)
{
    using namespace std::string_literals;
    Bytes tag("ID3");
    tag.Fill(1, 3).Fill(2).Big(0, 3).Big(15, 1).Text("TIT2").Big(5, 4).Fill(2).Text("\x00newe"s);
    const std::string block = "TAG" + "older"s + std::string(120, '\0');
    EXPECT_EQ(Mp3(Text(tag) + std::string(500, 'x') + block).title, TEXT("newe"));
}

TEST_F(SongFactsTest, OfAWmaSongAreItsTitleAndItsWholeLength)
{
    const SongFacts facts = Wma(SampleText("wma/tagged.wma"));
    EXPECT_GT(facts.lengthMs, 0U);
    EXPECT_FALSE(facts.title.empty());
    EXPECT_TRUE(Wma(SampleText("wma/untagged.wma")).title.empty());
}

} // namespace
