#include "tests/platform/gdi/canvas.h"

#include <gtest/gtest.h>

namespace {

// How many lines `text` makes in a rectangle narrower than any of its words.
int CountNarrowLines(const WString& text)
{
    const cardsong::test::Canvas canvas(1, 1);
    TEXTMETRICW metrics{};
    EXPECT_TRUE(GetTextMetricsW(canvas.Dc(), &metrics));
    RECT rect = { 0, 0, 1, 0 };
    return DrawTextW(canvas.Dc(), text.c_str(), -1, &rect, DT_CALCRECT | DT_WORDBREAK) / metrics.tmHeight;
}

TEST(TextLines, ALineBreaksAroundTheCharactersOfTheEastAsianBlocksAlone)
{
    struct Block {
        const char* name;
        WCHAR first;
        WCHAR last;
    };
    constexpr Block kBlocks[] = {
        { "radicals to ideographs", 0x2E80, 0x9FFF },
        { "hangul syllables", 0xAC00, 0xD7AF },
        { "compatibility ideographs", 0xF900, 0xFAFF },
        { "full-width forms", 0xFF00, 0xFFEF },
    };
    for (const auto& block : kBlocks) {
        const auto before = static_cast<WCHAR>(block.first - 1);
        const auto after = static_cast<WCHAR>(block.last + 1);
        EXPECT_EQ(CountNarrowLines({ 'x', before }), 1) << block.name;
        EXPECT_EQ(CountNarrowLines({ 'x', block.first }), 2) << block.name;
        EXPECT_EQ(CountNarrowLines({ 'x', block.last }), 2) << block.name;
        EXPECT_EQ(CountNarrowLines({ 'x', after }), 1) << block.name;
        EXPECT_EQ(CountNarrowLines({ block.last, 'x' }), 2) << block.name;
        EXPECT_EQ(CountNarrowLines({ after, 'x' }), 1) << block.name;
    }
}

TEST(TextLines, AnIdeographWiderThanTheLineStandsAlone)
{
    EXPECT_EQ(CountNarrowLines({ 0x6B4C, 0x6B4C, ' ', ' ', 0x6B4C }), 3);
    EXPECT_EQ(CountNarrowLines({ 0x6B4C, ' ', ' ', 'x' }), 2);
    EXPECT_EQ(CountNarrowLines({ 0x6B4C, ' ', ' ' }), 1);
}

std::vector<std::uint16_t> PictureOf(const WString& text, UINT side = DT_LEFT)
{
    cardsong::test::Canvas canvas(120, 30);
    RECT rect = { 0, 0, 120, 30 };
    SetTextColor(canvas.Dc(), RGB(255, 255, 255));
    SetBkMode(canvas.Dc(), TRANSPARENT);
    DrawTextW(canvas.Dc(), text.c_str(), -1, &rect, DT_SINGLELINE | DT_NOPREFIX | side);
    return canvas.Pixels();
}

// A character that no font has is shown as its number, so that even those differ.
TEST(TextRuns, EveryCharacterOfAPairIsShownAsItself)
{
    EXPECT_NE(PictureOf(TEXT("\U0002A001")), PictureOf(TEXT("\U0002A002")));
    EXPECT_NE(PictureOf(TEXT("\U0002A001")), PictureOf(TEXT("\U0002A401")));
}

// A long text is shaped in pieces, of 512 units at most.
TEST(TextRuns, APairThatStandsAcrossTheEndOfAPieceIsShownWhole)
{
    const WString pair = TEXT("\U0002A001");
    for (const std::size_t before : { 510U, 511U, 512U })
        EXPECT_EQ(PictureOf(WString(before, 'x') + pair, DT_RIGHT), PictureOf(WString(40, 'x') + pair, DT_RIGHT))
            << before;
}

TEST(TextRuns, ControlCharactersAndLineSeparatorsAreBlanks)
{
    for (const auto* const text : { TEXT("a\x01"
                                         "b"),
                                    TEXT("a\x1F"
                                         "b"),
                                    TEXT("a\x7F"
                                         "b"),
                                    TEXT("a\x80"
                                         "b"),
                                    TEXT("a\x9F"
                                         "b"),
                                    TEXT("a\u2028b"), TEXT("a\u2029b") })
        EXPECT_EQ(PictureOf(text), PictureOf(TEXT("a b")));
    for (const auto* const text : { TEXT("a!b"), TEXT("a~b"),
                                    TEXT("a\xA1"
                                         "b"),
                                    TEXT("a\u2026b") })
        EXPECT_NE(PictureOf(text), PictureOf(TEXT("a b")));
}

} // namespace
