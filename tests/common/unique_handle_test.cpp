#include "common/unique_handle.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

std::vector<int> g_closed;

// Numbers in the place of handles: -1 is none, so that 0 is a handle like any other.
struct NumberTraits {
    using Handle = int;
    static int None() { return -1; }
    static void Close(int number) { g_closed.push_back(number); }
};
using UniqueNumber = UniqueHandle<NumberTraits>;

class UniqueHandleTest : public ::testing::Test {
protected:
    void SetUp() override { g_closed.clear(); }
};

TEST_F(UniqueHandleTest, ClosesItsHandleAtTheEnd)
{
    {
        const UniqueNumber seven(7);
        EXPECT_TRUE(seven);
        EXPECT_EQ(seven.Get(), 7);
        EXPECT_TRUE(g_closed.empty());
    }
    EXPECT_EQ(g_closed, std::vector<int>{ 7 });
}

TEST_F(UniqueHandleTest, WithoutAHandleClosesNothing)
{
    {
        const UniqueNumber none;
        EXPECT_FALSE(none);
        EXPECT_EQ(none.Get(), -1);
        const UniqueNumber refused(-1);
        EXPECT_FALSE(refused);
    }
    EXPECT_TRUE(g_closed.empty());
}

TEST_F(UniqueHandleTest, ResetClosesTheOldHandleAndKeepsTheNew)
{
    {
        UniqueNumber number(1);
        number.Reset(0);
        EXPECT_EQ(g_closed, std::vector<int>{ 1 });
        EXPECT_EQ(number.Get(), 0);
        number.Reset();
        EXPECT_EQ(g_closed, (std::vector<int>{ 1, 0 }));
        EXPECT_FALSE(number);
    }
    EXPECT_EQ(g_closed, (std::vector<int>{ 1, 0 }));
}

TEST_F(UniqueHandleTest, ReleaseGivesTheHandleAway)
{
    {
        UniqueNumber number(5);
        EXPECT_EQ(number.Release(), 5);
        EXPECT_FALSE(number);
    }
    EXPECT_TRUE(g_closed.empty());
}

TEST_F(UniqueHandleTest, MovingClosesWhatTheTargetHadAndEmptiesTheSource)
{
    {
        UniqueNumber from(1);
        UniqueNumber to(2);
        to = std::move(from);
        EXPECT_EQ(g_closed, std::vector<int>{ 2 });
        EXPECT_EQ(from.Get(), -1);
        const UniqueNumber last(std::move(to));
        EXPECT_EQ(to.Get(), -1);
        EXPECT_EQ(last.Get(), 1);
    }
    EXPECT_EQ(g_closed, (std::vector<int>{ 2, 1 }));
}

} // namespace
