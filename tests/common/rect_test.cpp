#include "common/rect.h"

#include <gtest/gtest.h>

namespace {

TEST(Rect, IsAsWideAndHighAsItsEdgesAreApart)
{
    constexpr RECT rect{ 33, 117, 113, 137 };
    EXPECT_EQ(WidthOf(rect), 80);
    EXPECT_EQ(HeightOf(rect), 20);
}

TEST(Rect, TurnedRoundIsNegative)
{
    constexpr RECT rect{ 10, 20, 4, 13 };
    EXPECT_EQ(WidthOf(rect), -6);
    EXPECT_EQ(HeightOf(rect), -7);
}

} // namespace
