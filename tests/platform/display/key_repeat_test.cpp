#include "platform/linux/display/key_repeat.h"

#include <climits>
#include <gtest/gtest.h>

namespace {

using cardsong::display::KeyRepeat;
using Strike = std::optional<std::uint32_t>;

TEST(KeyRepeat, StrikesAfterTheDelayAndThenInStep)
{
    KeyRepeat repeat;
    repeat.SetRate(20, 300);
    repeat.Press(7, 1000);
    EXPECT_EQ(repeat.NextMs(), std::optional<std::uint64_t>(1300));
    EXPECT_EQ(repeat.TakeDue(1299), Strike());
    EXPECT_EQ(repeat.TakeDue(1300), Strike(7));
    EXPECT_EQ(repeat.TakeDue(1300), Strike());
    EXPECT_EQ(repeat.NextMs(), std::optional<std::uint64_t>(1350));
    EXPECT_EQ(repeat.TakeDue(1350), Strike(7));
}

TEST(KeyRepeat, TakesTheUsualRateWhereNoneWasTold)
{
    KeyRepeat repeat;
    repeat.Press(7, 0);
    EXPECT_EQ(repeat.TakeDue(599), Strike());
    EXPECT_EQ(repeat.TakeDue(600), Strike(7));
    EXPECT_EQ(repeat.NextMs(), std::optional<std::uint64_t>(640));
}

TEST(KeyRepeat, StrikesOnceForAllThatItMissed)
{
    KeyRepeat repeat;
    repeat.SetRate(20, 300);
    repeat.Press(7, 0);
    EXPECT_EQ(repeat.TakeDue(60000), Strike(7));
    EXPECT_EQ(repeat.TakeDue(60049), Strike());
    EXPECT_EQ(repeat.TakeDue(60050), Strike(7));
}

TEST(KeyRepeat, KeepsInStepAfterAStrikeThatCameLate)
{
    KeyRepeat repeat;
    repeat.SetRate(20, 300);
    repeat.Press(7, 1000);
    EXPECT_EQ(repeat.TakeDue(1349), Strike(7));
    EXPECT_EQ(repeat.TakeDue(1350), Strike(7));
    EXPECT_EQ(repeat.NextMs(), std::optional<std::uint64_t>(1400));
}

TEST(KeyRepeat, EndsWithItsKeyAndNotWithAnother)
{
    KeyRepeat repeat;
    repeat.Press(7, 0);
    repeat.Release(8);
    EXPECT_TRUE(repeat.NextMs());
    repeat.Release(7);
    EXPECT_FALSE(repeat.NextMs());
    EXPECT_EQ(repeat.TakeDue(60000), Strike());
}

TEST(KeyRepeat, GoesOverToTheKeyPressedLast)
{
    KeyRepeat repeat;
    repeat.SetRate(20, 300);
    repeat.Press(7, 0);
    repeat.Press(8, 200);
    repeat.Release(7);
    EXPECT_EQ(repeat.TakeDue(499), Strike());
    EXPECT_EQ(repeat.TakeDue(500), Strike(8));
}

TEST(KeyRepeat, IsOffWhereTheRateSaysSo)
{
    for (const int perSecond : { 0, -1, INT_MIN }) {
        KeyRepeat repeat;
        repeat.SetRate(perSecond, 1);
        repeat.Press(7, 0);
        EXPECT_FALSE(repeat.NextMs()) << perSecond;
    }
}

TEST(KeyRepeat, EndsWhenItIsSwitchedOffWhileAKeyIsHeld)
{
    KeyRepeat repeat;
    repeat.SetRate(20, 300);
    repeat.Press(7, 1000);
    repeat.SetRate(0, 300);
    EXPECT_FALSE(repeat.NextMs());
    EXPECT_EQ(repeat.TakeDue(60000), Strike());
    repeat.SetRate(20, 300);
    EXPECT_FALSE(repeat.NextMs());
    repeat.Press(7, 70000);
    EXPECT_EQ(repeat.TakeDue(70300), Strike(7));
}

TEST(KeyRepeat, TakesAnotherRateFromTheNextStrikeOn)
{
    KeyRepeat repeat;
    repeat.SetRate(20, 300);
    repeat.Press(7, 1000);
    repeat.SetRate(10, 5000);
    EXPECT_EQ(repeat.TakeDue(1300), Strike(7));
    EXPECT_EQ(repeat.NextMs(), std::optional<std::uint64_t>(1400));
}

TEST(KeyRepeat, IsNeverFasterThanAThousandStrikesASecond)
{
    KeyRepeat repeat;
    repeat.SetRate(INT_MAX, INT_MIN);
    repeat.Press(7, 5);
    EXPECT_EQ(repeat.TakeDue(5), Strike(7));
    EXPECT_EQ(repeat.NextMs(), std::optional<std::uint64_t>(6));
}

} // namespace
