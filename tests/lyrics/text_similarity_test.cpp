#include "lyrics/text_similarity.h"

#include "tests/lyrics/lyric_lines.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using cardsong::test::Utf8;
using cardsong::test::Wide;

bool IsAsciiLetter(WCHAR unit)
{
    return (unit >= 'A' && unit <= 'Z') || (unit >= 'a' && unit <= 'z');
}

int PlainScore(WStringView name, WStringView text)
{
    int score = 0;
    for (std::size_t k = 0; k < name.size() && k < text.size(); ++k) {
        if (name[k] == text[k])
            score += name[k] == ' ' ? 0 : 1;
        else if (!IsAsciiLetter(name[k]))
            break;
        else if (IsAsciiLetter(text[k]) && std::abs(int{ name[k] } - int{ text[k] }) == 34)
            ++score;
    }
    return score;
}

// Every alignment of all, as the rule says it.
int PlainSimilarity(WStringView name, WStringView text)
{
    int best = 0;
    for (std::size_t i = 0; i < name.size(); ++i) {
        for (std::size_t j = 0; j < text.size(); ++j)
            best = std::max(best, PlainScore(name.substr(i), text.substr(j)));
    }
    return best;
}

int Similarity(std::string_view name, std::string_view text, std::int32_t above = 0)
{
    return TextSimilarity(Wide(name), Wide(text), above);
}

TEST(TextSimilarity, ANameIsAsLikeItselfAsItIsLongWithoutItsSpaces)
{
    EXPECT_EQ(Similarity("Twinkle", "Twinkle"), 7);
    EXPECT_EQ(Similarity("My Song", "My Song"), 6);
    EXPECT_EQ(UnitsWithoutSpaces(TEXT(" My  Song ")), 6);
    EXPECT_EQ(UnitsWithoutSpaces(TEXT("")), 0);
}

TEST(TextSimilarity, ThePlaceInTheOtherTextDoesNotMatter)
{
    EXPECT_EQ(Similarity("Song", "ti:Song"), 4);
    EXPECT_EQ(Similarity("01 Song", "Song"), 4);
}

TEST(TextSimilarity, LettersThatDifferCountNothingAndGoOn)
{
    EXPECT_EQ(Similarity("aXb", "aYb"), 2);
    EXPECT_EQ(Similarity("aXb", "a1b"), 2);
}

TEST(TextSimilarity, WhatIsNoLetterEndsAnAlignment)
{
    EXPECT_EQ(Similarity("ab1cd", "ab2cd"), 2);
    EXPECT_EQ(Similarity("ab cd", "abxcd"), 2) << "a space is no letter";
    EXPECT_EQ(TextSimilarity(TEXT("ab\u4E00cde"), TEXT("ab\u4E8Ccde")), 3) << "nor is one of another script";
}

TEST(TextSimilarity, LettersWhoseCodesDifferByThirtyFourCountAsOne)
{
    EXPECT_EQ(Similarity("A", "c"), 1);
    EXPECT_EQ(Similarity("c", "A"), 1);
    EXPECT_EQ(Similarity("X", "z"), 1);
    EXPECT_EQ(Similarity("A", "a"), 0) << "the same letter of another case is not one of them";
    EXPECT_EQ(Similarity("A", "d"), 0);
    EXPECT_EQ(Similarity("a", "?"), 0) << "a question mark is no letter";
    EXPECT_EQ(Similarity("?", "a"), 0);
}

TEST(TextSimilarity, EmptyTextsHaveNone)
{
    EXPECT_EQ(Similarity("", "x"), 0);
    EXPECT_EQ(Similarity("x", ""), 0);
    EXPECT_EQ(Similarity(" ", " "), 0);
}

TEST(TextSimilarity, IsThatOfThePlainRuleForAnyTexts)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const WString alphabet = TEXT("aAcC  1?@bxZz\u4E00\u4E8C");
    const auto anyText = [&] {
        WString text;
        for (auto units = random() % 16; units > 0; --units)
            text += alphabet[random() % alphabet.size()];
        return text;
    };
    for (int i = 0; i < 20'000; ++i) {
        const WString name = anyText();
        const WString text = anyText();
        const int expected = PlainSimilarity(name, text);
        ASSERT_EQ(TextSimilarity(name, text), expected) << Utf8(name) << " | " << Utf8(text);
        const auto above = static_cast<int>(random() % 20) - 2;
        ASSERT_EQ(TextSimilarity(name, text, above), std::max({ expected, above, 0 }))
            << Utf8(name) << " | " << Utf8(text) << " above " << above;
    }
}

// Each pair of places with a walk of its own would be 11 million steps, here 5 thousand times over.
TEST(TextSimilarity, NamesOfTwoHundredAndSixtyUnitsAreComparedQuickly)
{
    const std::string name(260, 'a');
    const std::string text(260, 'b');
    for (int i = 0; i < 200; ++i)
        ASSERT_EQ(Similarity(name, text), 0);
    EXPECT_EQ(Similarity(name, name), 260);
}

} // namespace
