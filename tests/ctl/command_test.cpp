#include "ctl/command.h"

#include <gtest/gtest.h>

TEST(OptionLine, HasItsTextInAColumn)
{
    EXPECT_EQ(OptionLine("--json", "a"), "  --json      a\n");
    EXPECT_EQ(OptionLine("--tenchars", "a"), "  --tenchars  a\n");
}

TEST(OptionLine, KeepsABlankBehindALongOption)
{
    EXPECT_EQ(OptionLine("--twelvechars", "a"), "  --twelvechars a\n");
    EXPECT_EQ(OptionLine("--elevenchar", "a"), "  --elevenchar a\n");
}
