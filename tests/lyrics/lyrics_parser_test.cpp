#include "lyrics/lyrics_parser.h"

#include "lyrics/lrc_groups.h"
#include "tests/lyrics/lyric_lines.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using cardsong::test::Lines;
using cardsong::test::LinesOf;
using cardsong::test::OwnedLyrics;
using cardsong::test::Utf8;
using cardsong::test::Wide;

Lines Parsed(WStringView text)
{
    OwnedLyrics list;
    ParseLrcText(text, LyricList(list.items));
    return list.All();
}

Lines Parsed(std::string_view ascii)
{
    return Parsed(WStringView(Wide(ascii)));
}

std::string Lower(std::string text)
{
    for (char& letter : text)
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return text;
}

// The rule as one would say it: each line goes to its place as it is read. Knows no list of ours.
Lines PlainlyParsed(const WString& text)
{
    Lines lines;
    LrcGroups groups(text);
    for (LrcGroup group; groups.Next(group);) {
        const std::string words = Utf8(group.text);
        for (const int timeMs : group.timesMs) {
            if (words.empty())
                continue;
            const auto place = std::ranges::lower_bound(lines, timeMs, {}, &Lines::value_type::first);
            if (place == lines.end() || place->first != timeMs)
                lines.insert(place, { timeMs, words });
            else if (Lower(place->second) != Lower(words))
                place->second += "   " + words;
        }
    }
    return lines;
}

TEST(LyricsParser, AStampedTextIsALine)
{
    EXPECT_EQ(Parsed("[00:12.34]Hello"), (Lines{ { 12'340, "Hello" } }));
}

TEST(LyricsParser, ATextWithTwoStampsIsTwoLines)
{
    EXPECT_EQ(Parsed("[00:01.00][00:05.00]Chorus"), (Lines{ { 1000, "Chorus" }, { 5000, "Chorus" } }));
}

TEST(LyricsParser, TextsWithOneStampAreJoined)
{
    EXPECT_EQ(Parsed("[00:03.00]A[00:03.00]B"), (Lines{ { 3000, "A   B" } }));
}

TEST(LyricsParser, ARepeatedTextIsKeptOnce)
{
    EXPECT_EQ(Parsed("[00:03.00]A[00:03.00]a"), (Lines{ { 3000, "A" } }));
    EXPECT_EQ(Parsed("[00:03.00][00:03.00][00:03.00]A"), (Lines{ { 3000, "A" } }));
}

TEST(LyricsParser, AlternatingTextsAreAllJoined)
{
    EXPECT_EQ(Parsed("[0:0]A[0:0]B[0:0]A[0:0]A[0:0]a"), (Lines{ { 0, "A   B   A   A   a" } }));
    EXPECT_EQ(Parsed("[0:0]A[0:0]B[0:0]a   b[0:0]A   B[0:0]C"), (Lines{ { 0, "A   B   C" } }));
}

TEST(LyricsParser, ALineOfControlCharactersIsNone)
{
    EXPECT_EQ(Parsed("[00:01.00]\r\n[00:02.00]x"), (Lines{ { 2000, "x" } }));
}

TEST(LyricsParser, TextEndsAtItsFirstZero)
{
    EXPECT_EQ(Parsed(std::string_view("[00:01]a\0[00:02]b", 17)), (Lines{ { 1000, "a" } }));
}

TEST(LyricsParser, AStampWithoutItsEndKeepsTheLinesBefore)
{
    EXPECT_EQ(Parsed("[00:01]a[00:02]b[00:03 c"), (Lines{ { 1000, "a" }, { 2000, "b" } }));
}

TEST(LyricsParser, AnySortOfTextGivesTheLinesOfThePlainRule)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const char* const pieces[] = { "[00:01]", "[00:02]", "[0:3]", "[00:02.5]", "[ti:x]", "[", "]",   "A",
                                   "a",       "B",       "A   b", "A   B",     "\n",     " ", "[:]", "long text" };
    for (int i = 0; i < 5000; ++i) {
        WString text;
        for (auto count = random() % 30; count > 0; --count)
            text += Wide(pieces[random() % std::size(pieces)]);
        ASSERT_EQ(Parsed(text), PlainlyParsed(text)) << Utf8(text);
    }
}

// 500 KB of stamps in front of as much text would ask for 55 GB as texts of their own.
TEST(LyricsParser, ATextThatManyStampsShareIsHeldOnce)
{
    WString text;
    for (int i = 0; i < 50'000; ++i) {
        WCHAR stamp[16];
        wsprintfW(stamp, TEXT("[%02d:%02d.%02d]"), i / 6000, i / 100 % 60, i % 100);
        text += stamp;
    }
    text += WString(500'000, TEXT('x'));
    OwnedLyrics list;
    ParseLrcText(text, LyricList(list.items));
    const ConstLyricList lines(list.items);
    ASSERT_EQ(lines.Count(), 50'000);
    EXPECT_EQ(lines.At(0).text->size(), 500'000U);
    EXPECT_EQ(lines.At(49'999).text, lines.At(0).text);
    EXPECT_EQ(lines.At(49'999).timeMs, 499'990);
}

WString Repeated(std::string_view ascii, int times)
{
    WString text;
    for (int i = 0; i < times; ++i)
        text += Wide(ascii);
    return text;
}

TEST(LyricsParser, ManyTextsOfOneStampAreJoinedWhole)
{
    WString text;
    std::string expected;
    for (int i = 0; i < 50'000; ++i) {
        const std::string words = "text " + std::to_string(i);
        text += Wide("[0:1]" + words);
        expected += (i > 0 ? "   " : "") + words;
    }
    EXPECT_EQ(Parsed(text), (Lines{ { 1000, expected } }));
}

// The rule would make 25 GB of it.
TEST(LyricsParser, JoinedTextsStayWithinTheirBound)
{
    const WString text = TEXT("[0:1]x") + Repeated("[0:1]", 50'000) + WString(500'000, TEXT('y')) + TEXT("[0:2]z");
    const Lines lines = Parsed(text);
    ASSERT_EQ(lines.size(), 2U);
    constexpr std::size_t kJoints = kMostJoinedUnits / 500'003;
    EXPECT_EQ(lines[0].second.size(), 1 + kJoints * 500'003);
    EXPECT_EQ(lines[1].second, "z");
}

TEST(LyricsParser, TheBoundIsOfAllJoinedTextsTogether)
{
    // Each line would be of 1 + 3 + 2 Mi units; two of them pass 4 Mi.
    const std::string large(2U << 20, 'y');
    const Lines lines =
        Parsed("[0:1]a[0:2]b[0:3]c[0:1][0:2][0:3]" + large + "[0:2]d[0:3]" + std::string(2U << 20, 'z'));
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0].second, "a   " + large);
    EXPECT_EQ(lines[1].second, "b   d") << "what is too large is dropped, what fits is not";
    EXPECT_EQ(lines[2].second, "c");
}

TEST(LyricsParser, ExactlyTheBoundIsJoined)
{
    const std::string most(kMostJoinedUnits - 4, 'y');
    EXPECT_EQ(Parsed("[0:1]a[0:1]" + most)[0].second.size(), kMostJoinedUnits);
    EXPECT_EQ(Parsed("[0:1]a[0:1]y" + most)[0].second, "a");
}

// Comparing texts of half a million units for each of the stamps would take minutes.
TEST(LyricsParser, LargeTextsThatAreTheSameAreNotComparedForEachStamp)
{
    const std::string large(500'000, 'x');
    const std::string other = std::string(499'999, 'X') + "y";
    WString text = Repeated("[:]", 20'000) + Wide(large) + Repeated("[:]", 20'000) + Wide(large);
    EXPECT_EQ(Parsed(text), (Lines{ { 0, large } }));
    text += TEXT("[:]") + Wide(other) + Repeated("[:]", 20'000) + Wide(large + "   " + other);
    EXPECT_EQ(Parsed(text), (Lines{ { 0, large + "   " + other } }));
}

} // namespace
