#include "library/play_time_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(FormatPlayTime, HasTheseTexts)
{
    const struct {
        std::uint32_t seconds;
        const WCHAR* text;
    } rows[] = { { 0, TEXT("--:--") },
                 { 1, TEXT("0:01") },
                 { 59, TEXT("0:59") },
                 { 60, TEXT("1:00") },
                 { 215, TEXT("3:35") },
                 { 3599, TEXT("59:59") },
                 { 3600, TEXT("1:00:00") },
                 { 3661, TEXT("1:01:01") },
                 { 36000, TEXT("10:00:00") },
                 { 35999, TEXT("9:59:59") },
                 { 4294967295, TEXT("1193046:28:15") } };
    for (const auto& row : rows)
        EXPECT_EQ(WString(FormatPlayTime(row.seconds)), row.text) << row.seconds;
}

TEST(FormatPlayTime, OverwritesOneText)
{
    const WCHAR* first = FormatPlayTime(59);
    EXPECT_EQ(FormatPlayTime(60), first);
    EXPECT_EQ(WString(first), TEXT("1:00"));
}

TEST(WholeSeconds, AreTruncatedAndBounded)
{
    const struct {
        double seconds;
        std::uint32_t expected;
    } rows[] = { { 0, 0 },
                 { 0.9, 0 },
                 { 215.9, 215 },
                 { -5, 0 },
                 { 4294967294.5, 4294967294 },
                 { 1e300, 4294967295 },
                 { std::numeric_limits<double>::quiet_NaN(), 0 } };
    for (const auto& row : rows)
        EXPECT_EQ(WholeSeconds(row.seconds), row.expected) << row.seconds;
}

} // namespace
