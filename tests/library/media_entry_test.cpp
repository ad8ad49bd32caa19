#include "library/media_entry.h"

#include <gtest/gtest.h>

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

} // namespace
