#include "platform/linux/bus/message_budget.h"

#include <gtest/gtest.h>

namespace cardsong::bus {
namespace {

int TakenAt(MessageBudget& budget, std::uint64_t nowMs, int offered)
{
    int taken = 0;
    for (int i = 0; i < offered; ++i)
        taken += budget.Take(nowMs) ? 1 : 0;
    return taken;
}

TEST(MessageBudget, TwentyFiveMessagesAreTakenAtOnce)
{
    MessageBudget budget;
    EXPECT_EQ(TakenAt(budget, 1000, 1000), 25);
}

TEST(MessageBudget, AFloodIsCutToTwentyFiveASecond)
{
    MessageBudget budget;
    int taken = 0;
    for (std::uint64_t nowMs = 0; nowMs < 10'000; ++nowMs)
        taken += TakenAt(budget, nowMs, 10);
    EXPECT_EQ(taken, 25 + 249); // the first at once, then one each 40 ms
}

TEST(MessageBudget, AQuietSecondMakesUpForAFlood)
{
    MessageBudget budget;
    EXPECT_EQ(TakenAt(budget, 0, 60), 25);
    EXPECT_EQ(TakenAt(budget, 39, 1), 0);
    EXPECT_EQ(TakenAt(budget, 40, 2), 1);
    EXPECT_EQ(TakenAt(budget, 2000, 60), 25);
}

TEST(MessageBudget, ALongSilenceAllowsNoMoreThanAShortOne)
{
    MessageBudget budget;
    EXPECT_EQ(TakenAt(budget, 1'000'000'000, 60), 25);
}

} // namespace
} // namespace cardsong::bus
