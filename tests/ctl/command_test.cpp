#include "ctl/command.h"

#include <gtest/gtest.h>

#include <cstdio>

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

TEST(Print, WritesTheTextAndNothingElse)
{
    std::FILE* const out = std::tmpfile();
    EXPECT_EQ(Print({ out, stderr, false }, "a 100 %s\n"), 0);
    char written[20] = {};
    std::rewind(out);
    EXPECT_EQ(std::fread(written, 1, sizeof written, out), 9U);
    EXPECT_STREQ(written, "a 100 %s\n");
    std::fclose(out);
}
