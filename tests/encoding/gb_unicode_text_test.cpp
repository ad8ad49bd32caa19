#include "encoding/gb_unicode_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr unsigned kUntouched = 0xBEEF;

// The units written for `text`, up to the first that was left alone.
std::vector<unsigned> Converted(const std::string& text)
{
    std::vector<Utf16Unit> units(text.size() + 1, static_cast<Utf16Unit>(kUntouched));
    gbToUnicode(text.c_str(), units.data());
    const auto end = std::find(units.begin(), units.end(), static_cast<Utf16Unit>(kUntouched));
    EXPECT_NE(end, units.end());
    return { units.begin(), end };
}

using Units = std::vector<unsigned>;

TEST(GbToUnicode, EmptyTextWritesNothing)
{
    EXPECT_EQ(Converted(""), Units{});
}

TEST(GbToUnicode, AsciiAndAHanziWriteThreeUnitsAndNoZero)
{
    EXPECT_EQ(Converted("AB\xB0\xA1"), (Units{ 0x0041, 0x0042, 0x554A }));
}

TEST(GbToUnicode, AnAsciiByteStaysItself)
{
    EXPECT_EQ(Converted("\x01 ~\x7F"), (Units{ 0x01, 0x20, 0x7E, 0x7F }));
}

TEST(GbToUnicode, APairOutsideTheHanziBecomesTwoWidenedBytes)
{
    EXPECT_EQ(Converted("\xA1\xA1"), (Units{ 0xFFA1, 0xFFA1 }));
    EXPECT_EQ(Converted("\x80\xFF"), (Units{ 0xFF80, 0xFFFF }));
}

TEST(GbToUnicode, TheKnownPairsEndWhereTheyShould)
{
    EXPECT_EQ(Converted("\xAF\xFE"), (Units{ 0xFFAF, 0xFFFE }));
    EXPECT_EQ(Converted("\xB0\xA0"), (Units{ 0xFFB0, 0xFFA0 }));
    EXPECT_EQ(Converted("\xB0\xFF"), (Units{ 0xFFB0, 0xFFFF }));
    EXPECT_EQ(Converted("\xD7\xF9"), (Units{ 0x5EA7 }));
    EXPECT_EQ(Converted("\xD7\xFA"), (Units{ 0xFFD7, 0xFFFA }));
    EXPECT_EQ(Converted("\xD7\xFE"), (Units{ 0xFFD7, 0xFFFE }));
    EXPECT_EQ(Converted("\xD8\xA1"), (Units{ 0x4E8D }));
    EXPECT_EQ(Converted("\xDD\xF9"), (Units{ 0x750D }));
    EXPECT_EQ(Converted("\xDD\xFA"), (Units{ 0xFFDD, 0xFFFA }));
    EXPECT_EQ(Converted("\xDE\xA1"), (Units{ 0xFFDE, 0xFFA1 }));
}

TEST(GbToUnicode, ALoneLeadByteAtTheEndIsWidened)
{
    EXPECT_EQ(Converted("A\xB0"), (Units{ 0x0041, 0xFFB0 }));
}

TEST(GbToUnicode, ALeadByteBeforeAsciiIsWidenedAndTheLetterKept)
{
    EXPECT_EQ(Converted("\xB0"
                        "A\xB0\xA1"),
              (Units{ 0xFFB0, 0x0041, 0x554A }));
}

TEST(GbToUnicode, HanziInARowAreOneUnitEach)
{
    EXPECT_EQ(Converted("\xC4\xE3\xBA\xC3"), (Units{ 0x4F60, 0x597D })); // "ni hao"
}

TEST(GbToUnicode, TheSecondByteOfAnUnknownPairMayBeginAKnownOne)
{
    EXPECT_EQ(Converted("\xA1\xB0\xA1"), (Units{ 0xFFA1, 0x554A }));
    EXPECT_EQ(Converted("\xF7\xB0\xA1"), (Units{ 0xFFF7, 0x554A }));
}

TEST(GbToUnicode, NothingBehindTheZeroIsConverted)
{
    Utf16Unit units[4] = { 9, 9, 9, 9 };
    gbToUnicode("A\xB0\0\xB0\xA1", units);
    EXPECT_EQ(units[0], 0x0041);
    EXPECT_EQ(units[1], 0xFFB0);
    EXPECT_EQ(units[2], 9);
}

} // namespace
