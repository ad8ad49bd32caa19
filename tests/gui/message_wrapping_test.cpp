#include "gui/message_wrapping.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

// Every unit is as wide as here: letters and separators 10 pixels, ideographs 20, 'W' 30.
int WidthOfUnit(WCHAR unit)
{
    if (unit == 'W')
        return 30;
    return unit >= 0x4E00 && unit <= 0x9FA5 ? 20 : 10;
}

int WidthOf(WStringView text)
{
    int width = 0;
    for (const WCHAR unit : text)
        width += WidthOfUnit(unit);
    return width;
}

std::vector<MessageLine> Wrap(WStringView text, int roomPx = 100)
{
    return WrapMessage(text, roomPx, WidthOf);
}

// The lines as texts.
std::vector<WString> Lines(const WString& text, int roomPx = 100)
{
    std::vector<WString> lines;
    for (const MessageLine& line : Wrap(text, roomPx))
        lines.push_back(text.substr(line.start, line.length));
    return lines;
}

using Texts = std::vector<WString>;

} // namespace

TEST(MessageWrapping, AnEmptyTextHasNoLine)
{
    EXPECT_EQ(Wrap(TEXT("")), std::vector<MessageLine>());
}

TEST(MessageWrapping, SeparatorsAloneMakeNoLine)
{
    EXPECT_EQ(Wrap(TEXT(" \t\r\n\x01 ")), std::vector<MessageLine>());
}

TEST(MessageWrapping, ATextThatFitsIsOneLine)
{
    EXPECT_EQ(Wrap(TEXT("abc def")), (std::vector<MessageLine>{ { 0, 7 } }));
}

TEST(MessageWrapping, ALineOfExactlyTheRoomFits)
{
    EXPECT_EQ(Lines(TEXT("abcde fghi")), (Texts{ TEXT("abcde fghi") }));
    EXPECT_EQ(Lines(TEXT("abcde fghij")), (Texts{ TEXT("abcde "), TEXT("fghij") }));
}

TEST(MessageWrapping, ALineBreaksAfterAWordAndKeepsTheSeparator)
{
    EXPECT_EQ(Wrap(TEXT("aaaa bbbb cccc")), (std::vector<MessageLine>{ { 0, 10 }, { 10, 4 } }));
}

TEST(MessageWrapping, LeadingSeparatorsBelongToNoLine)
{
    EXPECT_EQ(Wrap(TEXT("  \t abc")), (std::vector<MessageLine>{ { 4, 3 } }));
    EXPECT_EQ(Wrap(TEXT("\n\n\nabc")), (std::vector<MessageLine>{ { 3, 3 } }));
}

TEST(MessageWrapping, EveryUnitBelow33SeparatesWords)
{
    for (WCHAR unit = 1; unit <= 40; ++unit) {
        if (unit == 10 || unit == 13)
            continue;
        const WString text = TEXT("aaaaaa") + WString(1, unit) + TEXT("bbbbbb");
        EXPECT_EQ(Lines(text)[0].size(), unit < 33 ? 7U : 10U) << int{ unit };
    }
}

TEST(MessageWrapping, AZeroInTheTextIsASeparator)
{
    const WString text(TEXT("aaaaaa\0bbbbbb"), 13);
    EXPECT_EQ(Lines(text), (Texts{ WString(TEXT("aaaaaa\0"), 7), TEXT("bbbbbb") }));
}

TEST(MessageWrapping, SeveralSeparatorsStayInTheLineAsFarAsThereIsRoom)
{
    EXPECT_EQ(Lines(TEXT("aaaa   bbb")), (Texts{ TEXT("aaaa   bbb") }));
    EXPECT_EQ(Lines(TEXT("aaaaaaaa     bbb")), (Texts{ TEXT("aaaaaaaa   "), TEXT("bbb") })); // the last of the three
}

TEST(MessageWrapping, SeparatorsAtTheEndOfTheTextStayInTheLine)
{
    EXPECT_EQ(Lines(TEXT("abc  ")), (Texts{ TEXT("abc  ") }));
}

// ---- ideographs ----

TEST(MessageWrapping, ALineMayBreakBeforeAnyIdeograph)
{
    EXPECT_EQ(Lines(TEXT("一二三四五六七")), (Texts{ TEXT("一二三四五"), TEXT("六七") }));
    EXPECT_EQ(Lines(TEXT("aaaaaa一二三")), (Texts{ TEXT("aaaaaa一二"), TEXT("三") }));
}

TEST(MessageWrapping, AWordAfterAnIdeographIsAWord)
{
    EXPECT_EQ(Lines(TEXT("一二三四abc")), (Texts{ TEXT("一二三四"), TEXT("abc") }));
}

TEST(MessageWrapping, ASeparatorAfterAnIdeographStaysInTheLine)
{
    EXPECT_EQ(Lines(TEXT("一二三四 五")), (Texts{ TEXT("一二三四 "), TEXT("五") }));
}

TEST(MessageWrapping, OnlyTheUnitsFrom4E00To9FA5AreIdeographs)
{
    for (const WCHAR unit : { WCHAR{ 0x4E00 }, WCHAR{ 0x9FA5 } })
        EXPECT_EQ(Lines(TEXT("aaaaaaaa") + WString(1, unit) + TEXT("bb"))[0].size(), 9U) << int{ unit };
    for (const WCHAR unit : { WCHAR{ 0x4DFF }, WCHAR{ 0x9FA6 }, WCHAR{ 0x3042 }, WCHAR{ 0xAC00 } })
        EXPECT_EQ(Lines(TEXT("aaaaaaaa") + WString(1, unit) + TEXT("bb"))[0].size(), 10U)
            << int{ unit }; // one word, cut
}

// ---- words and characters that are too wide ----

TEST(MessageWrapping, AWordThatIsWiderThanTheRoomIsCut)
{
    EXPECT_EQ(Lines(TEXT("abcdefghijklm")), (Texts{ TEXT("abcdefghij"), TEXT("klm") }));
}

TEST(MessageWrapping, AWordThatIsTooWideFillsTheLineThatIsBegun)
{
    EXPECT_EQ(Lines(TEXT("aaa bbbbbbbbbbbb")), (Texts{ TEXT("aaa bbbbbb"), TEXT("bbbbbb") }));
}

TEST(MessageWrapping, AWordThatIsTooWideButHasNoRoomForACharacterBeginsTheNextLine)
{
    EXPECT_EQ(Lines(TEXT("aaaaaaaaa bbbbbbbbbbbb")), (Texts{ TEXT("aaaaaaaaa "), TEXT("bbbbbbbbbb"), TEXT("bb") }));
}

TEST(MessageWrapping, ACharacterWiderThanTheRoomStandsAlone)
{
    EXPECT_EQ(Lines(TEXT("aWb"), 20), (Texts{ TEXT("a"), TEXT("W"), TEXT("b") }));
    EXPECT_EQ(Lines(TEXT("一二"), 15), (Texts{ TEXT("一"), TEXT("二") }));
    EXPECT_EQ(Lines(TEXT("ab"), 5), (Texts{ TEXT("a"), TEXT("b") }));
}

TEST(MessageWrapping, WithoutAnyRoomEachCharacterStandsAlone)
{
    EXPECT_EQ(Lines(TEXT("ab c"), 0), (Texts{ TEXT("a"), TEXT("b"), TEXT("c") }));
    EXPECT_EQ(Lines(TEXT("ab"), -70), (Texts{ TEXT("a"), TEXT("b") }));
}

TEST(MessageWrapping, TheTwoHalvesOfACharacterStayTogether)
{
    EXPECT_EQ(Lines(TEXT("aaaaaaaaa\U0001F600b")), (Texts{ TEXT("aaaaaaaaa"), TEXT("\U0001F600b") }));
    EXPECT_EQ(Lines(TEXT("\U0001F600\U0001F601"), 5), (Texts{ TEXT("\U0001F600"), TEXT("\U0001F601") }));
}

TEST(MessageWrapping, HalvesWithoutTheirOtherHalfAreCharacters)
{
    const WString low(3, WCHAR{ 0xDC00 });
    const WString high(3, WCHAR{ 0xD800 });
    EXPECT_EQ(Lines(low, 20), (Texts{ low.substr(0, 2), low.substr(0, 1) }));
    EXPECT_EQ(Lines(high, 20), (Texts{ high.substr(0, 2), high.substr(0, 1) }));
}

TEST(MessageWrapping, ALineHasNoMoreUnitsThanItsRoomHasPixels)
{
    const TextWidth nothing = [](WStringView) { return 0; };
    EXPECT_EQ(WrapMessage(WString(25, 'a'), 10, nothing),
              (std::vector<MessageLine>{ { 0, 10 }, { 10, 10 }, { 20, 5 } }));
    EXPECT_EQ(WrapMessage(TEXT("aaaaaa bbbbb"), 10, nothing), (std::vector<MessageLine>{ { 0, 7 }, { 7, 5 } }));
    EXPECT_EQ(WrapMessage(TEXT("a") + WString(30, 1) + TEXT("b"), 10, nothing),
              (std::vector<MessageLine>{ { 0, 11 }, { 31, 1 } }));
}

// ---- breaks ----

TEST(MessageWrapping, ALoneLineFeedEndsTheLineAndMakesNoEmptyOne)
{
    EXPECT_EQ(Lines(TEXT("abc\ndef")), (Texts{ TEXT("abc"), TEXT("def") }));
}

TEST(MessageWrapping, ACarriageReturnAndALineFeedMakeAnEmptyLine)
{
    EXPECT_EQ(Wrap(TEXT("abc\r\ndef")), (std::vector<MessageLine>{ { 0, 3 }, { 4, 0 }, { 5, 3 } }));
}

TEST(MessageWrapping, ALoneCarriageReturnEndsTheLine)
{
    EXPECT_EQ(Lines(TEXT("abc\rdef")), (Texts{ TEXT("abc"), TEXT("def") }));
    EXPECT_EQ(Lines(TEXT("abc\r\rdef")), (Texts{ TEXT("abc"), TEXT("def") }));
}

TEST(MessageWrapping, EachFurtherLineFeedIsAnEmptyLine)
{
    EXPECT_EQ(Wrap(TEXT("abc\n\n\ndef")), (std::vector<MessageLine>{ { 0, 3 }, { 4, 0 }, { 5, 0 }, { 6, 3 } }));
    EXPECT_EQ(Lines(TEXT("abc\n\r\ndef")), (Texts{ TEXT("abc"), TEXT("def") })); // not directly
    EXPECT_EQ(Lines(TEXT("abc\r\n\r\ndef")), (Texts{ TEXT("abc"), TEXT(""), TEXT("def") }));
}

TEST(MessageWrapping, ABreakAfterASeparatorIsABreak)
{
    EXPECT_EQ(Lines(TEXT("abc \r\ndef")), (Texts{ TEXT("abc "), TEXT(""), TEXT("def") }));
    EXPECT_EQ(Lines(TEXT("abcdefghij \r\nk")), (Texts{ TEXT("abcdefghij "), TEXT(""), TEXT("k") }));
}

TEST(MessageWrapping, ABreakAfterAnIdeographIsABreak)
{
    EXPECT_EQ(Lines(TEXT("一\r\n二")), (Texts{ TEXT("一"), TEXT(""), TEXT("二") }));
}

TEST(MessageWrapping, ABreakAfterACharacterThatIsTooWideIsABreak)
{
    EXPECT_EQ(Lines(TEXT("W\r\na"), 20), (Texts{ TEXT("W"), TEXT(""), TEXT("a") }));
    EXPECT_EQ(Lines(TEXT("一\r\n二"), 15), (Texts{ TEXT("一"), TEXT(""), TEXT("二") }));
}

TEST(MessageWrapping, ABreakWhereTheLineIsFullIsABreak)
{
    EXPECT_EQ(Lines(TEXT("abcdefghij\r\nk")), (Texts{ TEXT("abcdefghij"), TEXT(""), TEXT("k") }));
    EXPECT_EQ(Lines(TEXT("abcdefghijklmnopqrst\r\nk")),
              (Texts{ TEXT("abcdefghij"), TEXT("klmnopqrst"), TEXT(""), TEXT("k") }));
}

TEST(MessageWrapping, BreaksAtTheEndOfTheTextMakeEmptyLinesToo)
{
    EXPECT_EQ(Wrap(TEXT("abc\n")), (std::vector<MessageLine>{ { 0, 3 } }));
    EXPECT_EQ(Wrap(TEXT("abc\r\n")), (std::vector<MessageLine>{ { 0, 3 }, { 4, 0 } }));
}

// ---- the limit ----

TEST(MessageWrapping, WhatFollowsTheSixthLineIsLeftOut)
{
    EXPECT_EQ(Lines(TEXT("1\n2\n3\n4\n5\n6\n7")),
              (Texts{ TEXT("1"), TEXT("2"), TEXT("3"), TEXT("4"), TEXT("5"), TEXT("6") }));
    EXPECT_EQ(Lines(WString(1000, 'a')).size(), 6U);
}

TEST(MessageWrapping, EmptyLinesStopAtTheLimitToo)
{
    EXPECT_EQ(Lines(TEXT("a") + WString(1000, '\n') + TEXT("b")),
              (Texts{ TEXT("a"), TEXT(""), TEXT(""), TEXT(""), TEXT(""), TEXT("") }));
}

TEST(MessageWrapping, AnEndlessTextIsMeasuredInParts)
{
    std::size_t longest = 0;
    std::size_t calls = 0;
    const TextWidth watch = [&](WStringView text) {
        longest = std::max(longest, text.size());
        ++calls;
        return 0; // nothing ever fills a line
    };
    for (const WString& text :
         { WString(1'000'000, 'a'), WString(1'000'000, ' '), TEXT("a") + WString(1'000'000, 1) }) {
        WrapMessage(text, 250, watch);
        EXPECT_LE(longest, 251U);
    }
    EXPECT_LT(calls, 10'000U);
}

// ---- any text ----

namespace {

WString AnyText(std::mt19937& random)
{
    static constexpr WCHAR kUsual[] = { 'a', 'b', 'W', ' ', ' ', '\n', '\r', '\t', 1, 0x4E00, 0x4E8C, 0x9FA5 };
    WString text(random() % 120, 0);
    for (WCHAR& unit : text) {
        unit = random() % 8 == 0 ? static_cast<WCHAR>(random()) : kUsual[random() % std::size(kUsual)];
    }
    return text;
}

void ExpectLawful(const WString& text, int roomPx)
{
    const auto lines = Wrap(text, roomPx);
    ASSERT_LE(lines.size(), 6U);
    std::size_t end = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const MessageLine& line = lines[i];
        ASSERT_TRUE(i == 0 || line.start > lines[i - 1].start);
        ASSERT_GE(line.start, end);
        for (std::size_t at = end; at < line.start; ++at)
            ASSERT_LT(text[at], 33); // nothing visible is lost between the lines
        end = line.start + line.length;
        ASSERT_LE(end, text.size());
        WString shown = text.substr(line.start, line.length);
        while (!shown.empty() && shown.back() < 33)
            shown.pop_back();
        const bool isPair = shown.size() == 2 && (shown[0] & 0xFC00) == 0xD800 && (shown[1] & 0xFC00) == 0xDC00;
        ASSERT_TRUE(WidthOf(shown) <= roomPx || shown.size() == 1 || isPair);
    }
    if (lines.size() < 6) {
        for (std::size_t at = end; at < text.size(); ++at)
            ASSERT_LT(text[at], 33);
    }
}

} // namespace

TEST(MessageWrapping, KeepsItsLawsForAnyText)
{
    constexpr unsigned kSeed = 20'090;
    std::mt19937 random(kSeed);
    for (int i = 0; i < 20'000; ++i) {
        const WString text = AnyText(random);
        const int roomPx = static_cast<int>(random() % 300);
        ASSERT_NO_FATAL_FAILURE(ExpectLawful(text, roomPx)) << "text " << i << " of seed " << kSeed;
    }
}
