#include "encoding/code_page.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct Case {
    const char* name;
    std::string text;
    std::int32_t expected;
};

class CodePage : public testing::TestWithParam<Case> {};

TEST_P(CodePage, IsGuessed)
{
    EXPECT_EQ(GetCodePage(GetParam().text.c_str()), GetParam().expected);
}

std::string Pair(int lead, int trail)
{
    return { static_cast<char>(lead), static_cast<char>(trail) };
}

INSTANTIATE_TEST_SUITE_P(Texts, CodePage,
                         testing::Values(Case{ "EmptyTextHasNone", "", 0 }, Case{ "AsciiHasNone", "Yesterday", 0 },
                                         Case{ "OneAsciiLetterHasNone", "A", 0 },
                                         Case{ "ALoneLeadByteHasNone", "\xB0", 0 },
                                         Case{ "ALeadByteAfterAsciiAtTheEndHasNone", "AB\xB0", 0 },
                                         Case{ "HanziOfGb2312AreGb2312", "\xB0\xA1\xC4\xE3", 936 },
                                         Case{ "APairBehindOneLetterIsFound", "A\xB0\xA1", 936 },
                                         Case{ "AsManyOfEachIsGb2312", "\xB0\xA1\xA4\x40", 936 },
                                         Case{ "OneMoreOfBig5IsBig5", "\xB0\xA1\xA4\x40\xA4\x41", 950 },
                                         Case{ "OneMoreOfGb2312IsGb2312", "\xB0\xA1\xA4\x40\xB0\xA2", 936 },
                                         Case{ "ALowTrailByteIsBig5", "\xB0\x40", 950 },
                                         Case{ "BytesBelowTheLeadsAreStepped", "\x80\xB0\xA1", 936 },
                                         Case{ "APairIsTakenWhole", "\xA4\x40\xB0\xA1\xB0\xA1", 936 },
                                         Case{ "ALeadWithoutATrailIsSteppedByOne", "\xB0\x20\xB0\xA1", 936 }),
                         [](const auto& testCase) { return testCase.param.name; });

// Every pair of bytes, by the three ranges that make the rule.
TEST(CodePageOfOnePair, FollowsTheRangesOfLeadAndTrail)
{
    for (int lead = 1; lead < 256; ++lead) {
        for (int trail = 1; trail < 256; ++trail) {
            const bool trailOfBig5 = (trail >= 0x40 && trail <= 0x7E) || (trail >= 0xA1 && trail <= 0xFE);
            const bool likelyBig5 =
                (lead >= 0xAA && lead <= 0xAF && trail >= 0xA1) || (lead >= 0xA4 && lead <= 0xA9) || trail < 0x7F;
            std::int32_t expected = 0;
            if (lead >= 0xA1 && lead <= 0xF9 && trailOfBig5 && likelyBig5)
                expected = 950;
            else if (lead >= 0xA1 && lead <= 0xF7 && trail >= 0xA1 && trail <= 0xFE)
                expected = 936;
            ASSERT_EQ(GetCodePage(Pair(lead, trail).c_str()), expected) << std::hex << lead << ' ' << trail;
        }
    }
}

TEST(CodePageOfOnePair, NothingBehindTheZeroCounts)
{
    EXPECT_EQ(GetCodePage("\xB0\xA1\0\xA4\x40\xA4\x41\0"), 936);
}

TEST(CodePageOfOnePair, HasTheseValuesAtTheEdges)
{
    EXPECT_EQ(GetCodePage("\xA1\x40"), 950);
    EXPECT_EQ(GetCodePage("\xA0\x40"), 0);
    EXPECT_EQ(GetCodePage("\xA1\x3F"), 0);
    EXPECT_EQ(GetCodePage("\xA1\x7E"), 950);
    EXPECT_EQ(GetCodePage("\xA1\x7F"), 0);
    EXPECT_EQ(GetCodePage("\xA3\xA1"), 936);
    EXPECT_EQ(GetCodePage("\xA4\xA1"), 950);
    EXPECT_EQ(GetCodePage("\xAF\xFE"), 950);
    EXPECT_EQ(GetCodePage("\xB0\xFE"), 936);
    EXPECT_EQ(GetCodePage("\xA4\xFF"), 0);
    EXPECT_EQ(GetCodePage("\xA4\xA0"), 0);
    EXPECT_EQ(GetCodePage("\xF7\xA1"), 936);
    EXPECT_EQ(GetCodePage("\xF8\xA1"), 0);
    EXPECT_EQ(GetCodePage("\xF9\x40"), 950);
    EXPECT_EQ(GetCodePage("\xFA\x40"), 0);
}

} // namespace
