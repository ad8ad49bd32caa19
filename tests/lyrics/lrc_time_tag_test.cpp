#include "lyrics/lrc_time_tag.h"

#include "tests/lyrics/lyric_lines.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::Wide;

constexpr int kNoTime = -1;

struct Case {
    const char* tag;
    int expectedMs;
};

class LrcTimeTag : public ::testing::Test {
protected:
    static void Expect(std::initializer_list<Case> cases)
    {
        for (const Case& c : cases)
            EXPECT_EQ(ReadTimeTag(Wide(c.tag)).value_or(kNoTime), c.expectedMs) << c.tag;
    }
};

TEST_F(LrcTimeTag, MinutesSecondsAndHundredthsAreRead)
{
    Expect({ { "00:12.34", 12'340 }, { "01:02.03", 62'030 }, { "99:99.99", 6'039'990 }, { "10:00.00", 600'000 } });
}

TEST_F(LrcTimeTag, AFractionIsOfHundredthsHoweverManyDigitsItHas)
{
    Expect({ { "00:10.5", 10'050 }, { "00:10.50", 10'500 }, { "00:10.507", 10'500 }, { "00:10.", 10'000 } });
}

TEST_F(LrcTimeTag, MinutesAndSecondsAloneAreATime)
{
    Expect({ { "00:07", 7000 }, { "1:2", 62'000 }, { "3:", 180'000 }, { ":4", 4000 }, { ":", 0 } });
}

TEST_F(LrcTimeTag, MinutesAloneAreNoTime)
{
    Expect({ { "01", kNoTime }, { "1", kNoTime }, { "", kNoTime } });
}

TEST_F(LrcTimeTag, EmptyFieldsAreZero)
{
    Expect({ { ":.", 0 }, { ":.5", 50 }, { "1:.5", 60'050 }, { ":1.", 1000 } });
}

TEST_F(LrcTimeTag, BehindTwoDigitsAnyOneCharacterStands)
{
    Expect({ { "00x12y34", 12'340 }, { "00:12:34", 12'340 }, { "12345", 765'000 }, { "00 12", 12'000 } });
}

TEST_F(LrcTimeTag, AnotherCharacterBeforeTheSecondDigitIsNoTime)
{
    Expect({ { "ti:Song", kNoTime },
             { "1x:00", kNoTime },
             { "x1:00", kNoTime },
             { "00:1:5", kNoTime },
             { "00:x1", kNoTime },
             { "00:01.x", kNoTime },
             { "00:01.1x", kNoTime },
             { "offset:500", kNoTime },
             { "/0:00", kNoTime },
             { "0;:00", kNoTime },
             { "-1:00", kNoTime },
             { " 1:00", kNoTime } });
}

TEST_F(LrcTimeTag, AColonEndsAFractionToo)
{
    Expect({ { "00:01.5:7", 1050 }, { "00:01.:", 1000 } });
}

TEST_F(LrcTimeTag, WhatStandsBehindTheFractionCountsForNothing)
{
    Expect({ { "00:01.23 and more", 1230 }, { "00:01.23]", 1230 } });
}

TEST_F(LrcTimeTag, DigitsOfOtherScriptsAreNoDigits)
{
    const WString fullwidth = { 0xFF10, 0xFF11, TEXT(':'), TEXT('0'), TEXT('0') };
    EXPECT_FALSE(ReadTimeTag(fullwidth));
}

} // namespace
