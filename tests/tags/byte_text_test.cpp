#include "tags/byte_text.h"

#include "tests/tags/bytes.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::Bytes;

TEST(StartsWithIgnoringCase, TakesEitherCase)
{
    EXPECT_TRUE(StartsWithIgnoringCase(Bytes("tAg..."), "TaG"));
    EXPECT_TRUE(StartsWithIgnoringCase(Bytes("azAZ"), "AZaz"));
}

TEST(StartsWithIgnoringCase, RefusesOtherAndTooFewBytes)
{
    EXPECT_FALSE(StartsWithIgnoringCase(Bytes("TAX"), "TAG"));
    EXPECT_FALSE(StartsWithIgnoringCase(Bytes("TA"), "TAG"));
    EXPECT_FALSE(StartsWithIgnoringCase(Bytes(" TAG"), "TAG"));
}

TEST(StartsWithIgnoringCase, LeavesBytesThatAreNoLettersAlone)
{
    EXPECT_FALSE(StartsWithIgnoringCase(Bytes("@["), "`{"));
    EXPECT_FALSE(StartsWithIgnoringCase(Bytes("["), "{"));
    EXPECT_FALSE(StartsWithIgnoringCase(Bytes("\xC4"), "\xE4"));
}

TEST(FindIgnoringCase, TellsTheFirstPlace)
{
    EXPECT_EQ(FindIgnoringCase(Bytes("..Ti:ti:"), "tI:"), 2u);
    EXPECT_EQ(FindIgnoringCase(Bytes("ti:"), "ti:"), 0u);
    EXPECT_EQ(FindIgnoringCase(Bytes("tti:"), "ti:"), 1u);
}

TEST(FindIgnoringCase, TellsNothingWhenThereIsNone)
{
    EXPECT_EQ(FindIgnoringCase(Bytes("ti"), "ti:"), std::nullopt);
    EXPECT_EQ(FindIgnoringCase(Bytes(""), "ti:"), std::nullopt);
    EXPECT_EQ(FindIgnoringCase(Bytes("ti:"), ""), std::nullopt);
}

} // namespace
