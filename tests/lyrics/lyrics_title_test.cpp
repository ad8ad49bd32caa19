#include "lyrics/lyrics_title.h"

#include "tests/lyrics/lyric_lines.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::Utf8;

// U+7231 U+7684 U+6B4C in GB2312, U+611B U+7684 U+6B4C in Big5.
constexpr const char kGb2312[] = "\xB0\xAE\xB5\xC4\xB8\xE8";
constexpr const char kBig5[] = "\xB7\x52\xAA\xBA\xBA\x71";

struct Titles {
    std::string traditional;
    std::string simplified;

    bool operator==(const Titles&) const = default;
};

Titles TitlesOf(std::string_view text)
{
    LyricsBytes bytes(text.begin(), text.end());
    bytes.push_back(0);
    const LyricsTitle title(bytes);
    return { Utf8(title.Traditional()), Utf8(title.Simplified()) };
}

TEST(LyricsTitle, BeginsWithItsMark)
{
    EXPECT_EQ(TitlesOf("[ti:Song]\n[00:01]x"), (Titles{ "ti:Song", "ti:Song" }));
    EXPECT_EQ(TitlesOf("[ar:me][Ti: My Song ][00:01]x"), (Titles{ "Ti: My Song ", "Ti: My Song " }));
}

TEST(LyricsTitle, Gb2312BecomesBig5ForTheFirstVariant)
{
    EXPECT_EQ(TitlesOf(std::string("[ti:") + kGb2312 + "]"),
              (Titles{ "ti:\u611B\u7684\u6B4C", "ti:\u7231\u7684\u6B4C" }));
}

TEST(LyricsTitle, Big5BecomesGb2312ForTheSecondVariant)
{
    EXPECT_EQ(TitlesOf(std::string("[ti:") + kBig5 + "]"),
              (Titles{ "ti:\u611B\u7684\u6B4C", "ti:\u7231\u7684\u6B4C" }));
}

TEST(LyricsTitle, TheWholeFileTellsItsCodePage)
{
    // One pair that speaks for GB2312, in a file of Big5.
    EXPECT_EQ(TitlesOf(std::string("[ti:\xB0\xAE][00:01]") + kBig5 + kBig5).simplified,
              TitlesOf(std::string("[ti:\xB0\xAE]\xB7\x52\xB7\x52\xB7\x52")).simplified);
    EXPECT_NE(TitlesOf(std::string("[ti:\xB0\xAE][00:01]") + kBig5 + kBig5).simplified,
              TitlesOf("[ti:\xB0\xAE]").simplified);
}

TEST(LyricsTitle, TheFirstMarkCountsWhereverItStands)
{
    EXPECT_EQ(TitlesOf("a multi:x][ti:Song]"), (Titles{ "ti:x", "ti:x" }));
    EXPECT_EQ(TitlesOf("[ti:][ti:Song]"), (Titles{ "ti:", "ti:" }));
}

TEST(LyricsTitle, WithoutMarkOrEndThereIsNone)
{
    for (const char* text : { "", "[00:01]x", "[ti:Song", "]ti:", "[ti;Song]", "t", "ti" })
        EXPECT_EQ(TitlesOf(text), Titles{}) << text;
}

TEST(LyricsTitle, TextBehindAZeroIsNotLookedAt)
{
    EXPECT_EQ(TitlesOf(std::string_view("x\0[ti:Song]", 11)), Titles{});
}

TEST(LyricsTitle, HasTwoHundredAndSixtyUnitsAtMost)
{
    EXPECT_EQ(TitlesOf("[ti:" + std::string(300, 'x') + "]").traditional, "ti:" + std::string(257, 'x'));
    std::string hanzi;
    std::string expected = "ti:";
    for (int i = 0; i < 300; ++i) {
        hanzi += "\xB0\xAE";
        expected += i < 257 ? "\u7231" : "";
    }
    EXPECT_EQ(TitlesOf("[ti:" + hanzi + "]").simplified, expected);
}

// The end of a tag is a byte that a trail byte of Big5 may be, too.
TEST(LyricsTitle, EndsAtAByteThatIsABracket)
{
    EXPECT_EQ(TitlesOf("[ti:\xA5\x5D\xA5\x40\xA5\x40]").traditional, "ti:?");
}

} // namespace
