#include "library/media_entry.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(MediaEntry, ANewOneHoldsItsNamesAndZeros)
{
    const std::unique_ptr<MediaFileEntry> entry = NewMediaEntry(TEXT("a.mp3"), TEXT("\\SDMMC"));
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(WString(entry->fileName), TEXT("a.mp3"));
    EXPECT_EQ(WString(entry->folder), TEXT("\\SDMMC"));
    EXPECT_EQ(entry->fileName[259], 0);
    EXPECT_EQ(entry->fileSize, 0u);
    EXPECT_EQ(entry->isChecked, 0);
    EXPECT_EQ(entry->playMark, 0);
    EXPECT_EQ(entry->duration, 0.0);
    EXPECT_EQ(entry->playedInShuffle, 0);
    EXPECT_EQ(PathOf(*entry), TEXT("\\SDMMC\\a.mp3"));
}

TEST(MediaEntry, APathOf260UnitsIsOutOfReach)
{
    const WString folder(200, TEXT('f'));
    const std::unique_ptr<MediaFileEntry> longest = NewMediaEntry(WString(58, TEXT('n')), folder);
    ASSERT_NE(longest, nullptr);
    EXPECT_EQ(PathOf(*longest).size(), 259u);
    EXPECT_EQ(NewMediaEntry(WString(59, TEXT('n')), folder), nullptr);
    EXPECT_EQ(NewMediaEntry(WString(300, TEXT('n')), TEXT("")), nullptr);
    EXPECT_EQ(NewMediaEntry(TEXT(""), WString(300, TEXT('f'))), nullptr);
}

TEST(MediaEntry, WholeSecondsAreTruncatedAndBounded)
{
    MediaFileEntry entry;
    const struct {
        double duration;
        std::uint32_t expected;
    } rows[] = { { 0, 0 },
                 { 0.9, 0 },
                 { 215.9, 215 },
                 { -5, 0 },
                 { 4294967294.5, 4294967294 },
                 { 1e300, 4294967295 },
                 { std::numeric_limits<double>::quiet_NaN(), 0 } };
    for (const auto& row : rows) {
        entry.duration = row.duration;
        EXPECT_EQ(WholeSeconds(entry), row.expected) << row.duration;
    }
}

} // namespace
