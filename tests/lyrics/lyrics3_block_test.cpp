#include "lyrics/embedded_lyrics.h"

#include "tests/lyrics/song_bytes.h"

#include <gtest/gtest.h>

namespace {

using namespace cardsong::test;

std::optional<EmbeddedLyrics> Read(const std::string& song)
{
    const Bytes bytes(song);
    MemorySource source(bytes);
    return ReadLyrics3Block(source);
}

std::string TextOf(const EmbeddedLyrics& lyrics)
{
    EXPECT_EQ(lyrics.bytes.back(), 0);
    return { lyrics.bytes.begin(), lyrics.bytes.end() - 1 };
}

const std::string kFields = "IND0000200LYR00016[00:01.00]Twinkle";

TEST(Lyrics3Block, TheWholeBlockIsHandedOnForDetection)
{
    const auto lyrics = Read(SongWithBlock(kFields));
    ASSERT_TRUE(lyrics);
    EXPECT_EQ(TextOf(*lyrics), "LYRICSBEGIN" + kFields);
    EXPECT_EQ(lyrics->codePage, kDetectCodePage);
}

TEST(Lyrics3Block, MagicWordsAreFoundInAnyCase)
{
    std::string song = SongWithBlock(kFields);
    for (const std::string word : { "LYRICSBEGIN", "LYRICS200", "TAG" }) {
        const std::size_t place = song.rfind(word);
        for (std::size_t i = place; i < place + word.size(); ++i)
            song[i] = static_cast<char>(std::tolower(song[i]));
        ASSERT_TRUE(Read(song)) << word;
    }
}

TEST(Lyrics3Block, WithoutAnId3v1TagBehindItThereIsNone)
{
    EXPECT_FALSE(Read(std::string(300, 'x') + Lyrics3Block(kFields)));
    EXPECT_FALSE(Read(std::string(300, 'x') + Lyrics3Block(kFields) + "TAX" + std::string(125, ' ')));
    EXPECT_FALSE(Read(SongWithBlock(kFields) + "x"));
}

TEST(Lyrics3Block, TheSizeLeadsToTheBeginning)
{
    const std::string block = "LYRICSBEGIN" + kFields;
    const auto withSize = [&](const std::string& digits) {
        return std::string(300, 'x') + block + digits + "LYRICS200" + Id3v1Block();
    };
    EXPECT_TRUE(Read(withSize(SixDigits(block.size()))));
    EXPECT_FALSE(Read(withSize(SixDigits(block.size() - 1))));
    EXPECT_FALSE(Read(withSize(SixDigits(block.size() + 1))));
    EXPECT_FALSE(Read(withSize("999999")));
    EXPECT_FALSE(Read(withSize("000000")));
    EXPECT_FALSE(Read(withSize("000010"))) << "shorter than its first word";
    EXPECT_FALSE(Read(withSize("      ")));
    EXPECT_FALSE(Read(withSize("-00046")));
}

TEST(Lyrics3Block, DigitsEndAtTheFirstOtherCharacter)
{
    ASSERT_EQ(("LYRICSBEGIN" + kFields).size(), 46U);
    EXPECT_TRUE(Read(std::string(300, 'x') + "LYRICSBEGIN" + kFields + "46 x9/LYRICS200" + Id3v1Block()));
    EXPECT_TRUE(Read(std::string(300, 'x') + "LYRICSBEGIN" + kFields + "0046:1LYRICS200" + Id3v1Block()));
}

TEST(Lyrics3Block, AFileThatIsNothingButTheBlockIsRead)
{
    const std::string song = Lyrics3Block(kFields) + Id3v1Block();
    EXPECT_TRUE(Read(song));
    EXPECT_FALSE(Read(song.substr(1)));
}

TEST(Lyrics3Block, ABlockWithoutFieldsIsOne)
{
    const auto lyrics = Read(SongWithBlock(""));
    ASSERT_TRUE(lyrics);
    EXPECT_EQ(TextOf(*lyrics), "LYRICSBEGIN");
}

TEST(Lyrics3Block, EveryBeginningOfASongIsReadWithinItsBytes)
{
    const std::string song = SongWithBlock(kFields);
    for (std::size_t size = 0; size < song.size(); ++size)
        EXPECT_FALSE(Read(song.substr(0, size))) << size;
}

// A file that ends earlier than it said.
class ShrinkingSource final : public ByteSource {
public:
    explicit ShrinkingSource(std::string song) : m_song(std::move(song)) {}
    std::uint64_t SizeBytes() override { return m_song.size(); }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> target) override
    {
        const Bytes bytes(m_song);
        MemorySource whole(bytes);
        return ++m_reads > 1 ? 0 : whole.ReadAt(offset, target);
    }

private:
    const std::string m_song;
    int m_reads = 0;
};

TEST(Lyrics3Block, ABlockThatCannotBeReadIsNone)
{
    ShrinkingSource source(SongWithBlock(kFields));
    EXPECT_FALSE(ReadLyrics3Block(source));
}

} // namespace
