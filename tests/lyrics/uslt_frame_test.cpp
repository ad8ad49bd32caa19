#include "lyrics/embedded_lyrics.h"

#include "tests/lyrics/song_bytes.h"

#include <gtest/gtest.h>

namespace {

using namespace cardsong::test;

std::optional<EmbeddedLyrics> Read(const std::string& song)
{
    const Bytes bytes(song);
    MemorySource source(bytes);
    return ReadUsltFrame(source);
}

std::string TextOf(const std::optional<EmbeddedLyrics>& lyrics)
{
    if (!lyrics)
        return "(none)";
    EXPECT_EQ(lyrics->bytes.back(), 0);
    return { lyrics->bytes.begin(), lyrics->bytes.end() - 1 };
}

std::string TextOfFrames(const std::string& frames)
{
    return TextOf(Read(SongWithFrames(frames)));
}

const std::string kText = "[00:01.00]Twinkle";

TEST(UsltFrame, TheEncodingSaysWhereTheTextBeginsAndItsCodePage)
{
    const struct {
        int encoding;
        std::int32_t codePage;
    } cases[] = { { 0, kDetectCodePage }, { 1, kAlreadyUtf16 },   { 2, kDetectCodePage },
                  { 3, 65001 },           { 4, kDetectCodePage }, { 255, kDetectCodePage } };
    for (const auto& c : cases) {
        const auto lyrics = Read(SongWithFrames(Frame("USLT", UsltData(c.encoding, kText))));
        EXPECT_EQ(TextOf(lyrics), kText) << c.encoding;
        ASSERT_TRUE(lyrics);
        EXPECT_EQ(lyrics->codePage, c.codePage) << c.encoding;
    }
}

TEST(UsltFrame, ADescriptorBecomesPartOfTheText)
{
    EXPECT_EQ(TextOfFrames(Frame("USLT", std::string("\3"
                                                     "engverse\0",
                                                     10) +
                                             kText)),
              std::string("erse\0", 5) + kText);
    EXPECT_EQ(TextOfFrames(Frame("USLT", std::string("\0"
                                                     "engabc\0",
                                                     8) +
                                             kText)),
              std::string("bc\0", 3) + kText);
}

TEST(UsltFrame, OtherFramesAreWalkedOver)
{
    EXPECT_EQ(TextOfFrames(Frame("TIT2", "title") + Frame("XXXX", std::string(5000, 'p')) +
                           Frame("USLT", UsltData(3, kText)) + Frame("USLT", UsltData(3, "second"))),
              kText);
}

TEST(UsltFrame, ItsNamesAreFoundInAnyCase)
{
    std::string song = SongWithFrames(Frame("uSlt", UsltData(3, kText)));
    song.replace(0, 3, "iD3");
    EXPECT_EQ(TextOf(Read(song)), kText);
}

TEST(UsltFrame, WithoutATagThereIsNone)
{
    EXPECT_FALSE(Read(""));
    EXPECT_FALSE(Read("ID3\x03"));
    EXPECT_FALSE(Read("ID4" + SongWithFrames(Frame("USLT", UsltData(3, kText))).substr(3)));
    EXPECT_FALSE(Read(std::string("ID3\x03\0\0\0\0\0\0", 10)));
}

TEST(UsltFrame, AnEmptyFrameEndsTheTag)
{
    EXPECT_EQ(TextOfFrames(Frame("TIT2", "") + Frame("USLT", UsltData(3, kText))), "(none)");
    EXPECT_EQ(TextOfFrames(Frame("USLT", "") + Frame("USLT", UsltData(3, kText))), "(none)");
}

TEST(UsltFrame, AFrameTooShortForItsTextIsPassedOver)
{
    for (const std::string& data : { std::string("\3"),
                                     std::string("\3"
                                                 "eng"),
                                     std::string("\1"
                                                 "eng\xFF\xFE\0",
                                                 7) })
        EXPECT_EQ(TextOfFrames(Frame("USLT", data) + Frame("USLT", UsltData(3, kText))), kText) << data.size();
}

TEST(UsltFrame, AFrameWithoutATextIsOne)
{
    EXPECT_EQ(TextOfFrames(Frame("USLT", UsltData(3, ""))), "");
    EXPECT_EQ(TextOfFrames(Frame("USLT", UsltData(1, ""))), "");
}

TEST(UsltFrame, AFrameThatRunsPastTheTagEndsWithIt)
{
    std::string frame = Frame("USLT", UsltData(3, kText));
    for (const std::uint32_t stated : { 0xFFFFFFFFU, 1000U, 23U }) {
        frame.replace(4, 4, BigEndian4(stated));
        EXPECT_EQ(TextOfFrames(frame), kText) << stated;
    }
}

TEST(UsltFrame, AFramePastTheTagIsNotReached)
{
    std::string frames = Frame("TIT2", "title");
    frames.replace(4, 4, BigEndian4(0xFFFFFFF0U));
    EXPECT_EQ(TextOfFrames(frames + Frame("USLT", UsltData(3, kText))), "(none)");
}

TEST(UsltFrame, SizesOfFramesHaveEightBitsAByteAndThatOfTheTagSeven)
{
    const std::string text = kText + std::string(300, '.');
    EXPECT_EQ(TextOfFrames(Frame("USLT", UsltData(3, text))), text);
    std::string song = SongWithFrames(Frame("USLT", UsltData(3, text)));
    song[6] = static_cast<char>(song[6] | 0x80);
    song[9] = static_cast<char>(song[9] | 0x80);
    EXPECT_EQ(TextOf(Read(song)), text) << "the eighth bit counts for nothing";
}

TEST(UsltFrame, AThirdByteOfASizeCounts)
{
    const std::string text = kText + std::string(70'000, '.');
    EXPECT_EQ(TextOfFrames(Frame("XXXX", std::string(70'000, 'p')) + Frame("USLT", UsltData(3, text))), text);
}

TEST(UsltFrame, ATagLongerThanTheFileIsNone)
{
    const std::string frames = Frame("USLT", UsltData(3, kText));
    std::string song = SongWithFrames(frames);
    song.resize(10 + frames.size());
    EXPECT_EQ(TextOf(Read(song)), kText);
    song.pop_back();
    EXPECT_FALSE(Read(song));
}

TEST(UsltFrame, EveryBeginningOfASongIsReadWithinItsBytes)
{
    const std::string song = SongWithFrames(Frame("TIT2", "title") + Frame("USLT", UsltData(1, kText)));
    for (std::size_t size = 0; size < song.size() - 300; ++size)
        EXPECT_FALSE(Read(song.substr(0, size))) << size;
}

TEST(UsltFrame, AHeaderAtTheVeryEndOfTheTagHasNoText)
{
    EXPECT_EQ(TextOfFrames(Frame("TIT2", "title") + "USLT" + std::string("\0\0\0\x05\0\0", 6)), "(none)");
    EXPECT_EQ(TextOfFrames(Frame("TIT2", "title") + "USLT"), "(none)");
}

TEST(UsltFrame, ATextAboveFourMegabytesIsPassedOver)
{
    const std::string most(kMostLyricsBytes, '.');
    EXPECT_EQ(TextOfFrames(Frame("USLT", UsltData(3, most))), most);
    EXPECT_EQ(TextOfFrames(Frame("USLT", UsltData(3, most + ".")) + Frame("USLT", UsltData(3, kText))), kText);
}

TEST(UsltFrame, NoMoreThanAThousandFramesAreLookedAt)
{
    std::string frames;
    for (int i = 0; i < 999; ++i)
        frames += Frame("XXXX", "x");
    const std::string uslt = Frame("USLT", UsltData(3, kText));
    EXPECT_EQ(TextOfFrames(frames + uslt), kText);
    EXPECT_EQ(TextOfFrames(frames + Frame("XXXX", "x") + uslt), "(none)");
}

// Reads fail from the second on, or from the third.
class FailingSource final : public ByteSource {
public:
    FailingSource(const std::string& song, int goodReads) : m_bytes(song), m_goodReads(goodReads) {}
    std::uint64_t SizeBytes() override { return m_bytes.size(); }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> target) override
    {
        MemorySource whole(m_bytes);
        return m_goodReads-- > 0 ? whole.ReadAt(offset, target) : 0;
    }

private:
    const Bytes m_bytes;
    int m_goodReads;
};

TEST(UsltFrame, ATagThatCannotBeReadHasNone)
{
    const std::string song = SongWithFrames(Frame("USLT", UsltData(3, kText)));
    for (int goodReads = 0; goodReads < 4; ++goodReads) {
        FailingSource source(song, goodReads);
        EXPECT_FALSE(ReadUsltFrame(source)) << goodReads;
    }
    FailingSource source(song, 4);
    EXPECT_TRUE(ReadUsltFrame(source));
}

} // namespace
