#include "lyrics/settings_texts.h"

#include "lyrics/strip_rect.h"
#include "tests/lyrics/lyric_lines.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using cardsong::test::Utf8;
using cardsong::test::Wide;

COLORREF Color(std::string_view ascii)
{
    return ParseColor(Wide(ascii));
}

std::vector<int> Rect(std::string_view ascii)
{
    const RECT rect = ParseRect(Wide(ascii));
    return { rect.left, rect.top, rect.right, rect.bottom };
}

using Edges = std::vector<int>;

TEST(ColorText, IsWrittenInDecimalWithoutSpaces)
{
    EXPECT_EQ(Utf8(ColorText(RGB(255, 0, 0))), "RGB(255,0,0)");
    EXPECT_EQ(Utf8(ColorText(RGB(1, 20, 255))), "RGB(1,20,255)");
    EXPECT_EQ(Utf8(ColorText(0xFF030201)), "RGB(1,2,3)") << "the highest byte is no color";
    EXPECT_EQ(Utf8(ColorText(kNoColor)), "RGB(255,255,255)");
}

TEST(RectText, IsWrittenWithoutSpaces)
{
    EXPECT_EQ(Utf8(RectText({ 30, 3, 210, 23 })), "RECT(30,3,210,23)");
    EXPECT_EQ(Utf8(RectText({ -2147483647 - 1, -1, 0, 2147483647 })), "RECT(-2147483648,-1,0,2147483647)");
}

TEST(ParseColor, RedIsTheLowestByte)
{
    EXPECT_EQ(Color("RGB(0,0,0)"), 0U);
    EXPECT_EQ(Color("RGB(1,2,3)"), 0x030201U);
    EXPECT_EQ(Color("rgb( 10 , 20 , 30 )"), 10U + 20U * 256 + 30U * 65536);
}

TEST(ParseColor, TheWordStandsAnywhereInAnyCase)
{
    EXPECT_EQ(Color("1,2,3 rGb"), 0x030201U);
    EXPECT_EQ(Color("my RGB is 1,2,3"), 0x030201U);
    for (const char* text : { "1,2,3", "RG B(1,2,3)", "", "RG", "BGR(1,2,3)" })
        EXPECT_EQ(Color(text), kNoColor) << text;
}

TEST(ParseColor, OfEachNumberTheLowEightBitsCount)
{
    EXPECT_EQ(Color("RGB(300,0,0)"), 44U);
    EXPECT_EQ(Color("RGB(0,-1,0)"), 0x00FF00U);
    EXPECT_EQ(Color("RGB(256,511,999999999)"), 0x00FF00U | (999'999'999U & 0xFF) << 16);
}

TEST(ParseColor, AMissingNumberIsNoColor)
{
    for (const char* text :
         { "RGB(1,2)", "RGB(1)", "RGB()", "RGB", "RGB(1,2,)", "RGB(1,2,x3)", "RGB(1,2,-3)", "RGB 1" })
        EXPECT_EQ(Color(text), kNoColor) << text;
}

TEST(ParseColor, TheFirstNumberHasNoSignAndLaterOnesMay)
{
    EXPECT_EQ(Color("RGB(-5,0,0)"), 5U);
    EXPECT_EQ(Color("RGB(0, -5,0)"), 0xFB00U);
}

TEST(ParseColor, ANumberBetweenCommasHasNineCharactersAtMost)
{
    EXPECT_EQ(Color("RGB(000000007,0,0)"), 7U);
    EXPECT_EQ(Color("RGB(0000000007,0,0)"), kNoColor);
    EXPECT_EQ(Color("RGB(0,        9,0)"), 0x900U);
    EXPECT_EQ(Color("RGB(0,         9,0)"), kNoColor);
}

TEST(ParseColor, OfTheLastNumberNineDigitsCountWithSpacesBetweenThem)
{
    EXPECT_EQ(Color("RGB(0,0,1 2)"), 12U << 16);
    EXPECT_EQ(Color("RGB(0,0,   0 0 0 0 0 0 0 0 79"), 7U << 16);
    EXPECT_EQ(Color("RGB(0,0,7x9)"), 7U << 16);
    EXPECT_EQ(Color("RGB(0,0,7"), 7U << 16);
}

TEST(ParseColor, ANumberThatIsNoneIsZero)
{
    EXPECT_EQ(Color("RGB(1,,3)"), 0x030001U);
    EXPECT_EQ(Color("RGB(1,x,3)"), 0x030001U);
    EXPECT_EQ(Color("RGB(1x,2x,3)"), 0x030201U);
}

TEST(ParseRect, SpacesBehindCommasAreAllowed)
{
    EXPECT_EQ(Rect("RECT(30, 3, 210, 23)"), (Edges{ 30, 3, 210, 23 }));
    EXPECT_EQ(Rect("RECT(30,3,210,23)"), (Edges{ 30, 3, 210, 23 }));
    EXPECT_EQ(Rect("rect 1,2,3,4"), (Edges{ 1, 2, 3, 4 }));
}

TEST(ParseRect, OnlyTheFirstAndTheLastNumberHaveNoSign)
{
    EXPECT_EQ(Rect("RECT(-5,0,10,10)"), (Edges{ 5, 0, 10, 10 }));
    EXPECT_EQ(Rect("RECT(5,-6,-7,10)"), (Edges{ 5, -6, -7, 10 }));
    EXPECT_EQ(Rect("RECT(5,6,7,-10)"), (Edges{ 0, 0, 0, 0 }));
}

TEST(ParseRect, NumbersAreNotCutToABytes)
{
    EXPECT_EQ(Rect("RECT(999999999,300,400,999999999)"), (Edges{ 999'999'999, 300, 400, 999'999'999 }));
    EXPECT_EQ(Rect("RECT(0,0,0,1234567891)"), (Edges{ 0, 0, 0, 123'456'789 }));
}

TEST(ParseRect, AMissingNumberIsNoRectangle)
{
    for (const char* text :
         { "RECT(1,2,3)", "RECT(1,2)", "RECT()", "RGB(1,2,3,4)", "", "RECT(1,2,3,)", "RECT(0000000001,2,3,4)" })
        EXPECT_EQ(Rect(text), (Edges{ 0, 0, 0, 0 })) << text;
}

TEST(SettingsTexts, WhatIsWrittenIsReadBack)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (int i = 0; i < 2000; ++i) {
        const COLORREF color = random() & 0xFFFFFF;
        ASSERT_EQ(ParseColor(ColorText(color)), color);
        const auto edge = [&] { return static_cast<LONG>(random() % 100'000); };
        const RECT rect = { edge(), edge() - 50'000, edge() - 50'000, edge() };
        const RECT read = ParseRect(RectText(rect));
        ASSERT_EQ(Utf8(RectText(read)), Utf8(RectText(rect)));
    }
}

TEST(StripRect, IsWhatItHasInCommonWithTheGreatestArea)
{
    const auto clipped = [](const RECT& rect) { return Utf8(RectText(ClippedStripRect(rect))); };
    EXPECT_EQ(clipped({ 0, 0, 285, 71 }), "RECT(0,0,284,70)");
    EXPECT_EQ(clipped({ 0, 0, 250, 70 }), "RECT(0,0,250,70)");
    EXPECT_EQ(clipped({ -10, -20, 1000, 1000 }), "RECT(0,0,284,70)");
    EXPECT_EQ(clipped({ 30, 3, 210, 23 }), "RECT(30,3,210,23)");
    EXPECT_EQ(clipped({ 100, 50, 400, 90 }), "RECT(100,50,284,70)");
    EXPECT_EQ(clipped({ 283, 69, 284, 70 }), "RECT(283,69,284,70)");
}

TEST(StripRect, WithNothingInCommonIsEmpty)
{
    const auto clipped = [](const RECT& rect) { return Utf8(RectText(ClippedStripRect(rect))); };
    EXPECT_EQ(clipped({ 284, 0, 300, 70 }), "RECT(0,0,0,0)");
    EXPECT_EQ(clipped({ 0, 70, 284, 90 }), "RECT(0,0,0,0)");
    EXPECT_EQ(clipped({ -5, 0, 0, 70 }), "RECT(0,0,0,0)");
    EXPECT_EQ(clipped({ 100, 10, 50, 20 }), "RECT(0,0,0,0)");
}

} // namespace
