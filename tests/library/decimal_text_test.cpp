#include "library/decimal_text.h"

#include <gtest/gtest.h>

TEST(DecimalText, HasASignAndNoLeadingZeros)
{
    EXPECT_EQ(DecimalText(0), TEXT("0"));
    EXPECT_EQ(DecimalText(107), TEXT("107"));
    EXPECT_EQ(DecimalText(-7), TEXT("-7"));
    EXPECT_EQ(DecimalText(4294967295), TEXT("4294967295"));
}
