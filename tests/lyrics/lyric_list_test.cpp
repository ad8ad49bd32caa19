#include "lyrics/lyric_list.h"

#include "tests/lyrics/lyric_lines.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::Lines;
using cardsong::test::OwnedLyrics;

TEST(LyricList, LinesStandInTheOrderOfTheirTimes)
{
    OwnedLyrics list;
    for (const int timeMs : { 2000, 1000, 3000, 0, 2500 })
        EXPECT_EQ(list.Add(timeMs, std::to_string(timeMs)), 1);
    EXPECT_EQ(list.All(),
              (Lines{ { 0, "0" }, { 1000, "1000" }, { 2000, "2000" }, { 2500, "2500" }, { 3000, "3000" } }));
}

TEST(LyricList, TextsOfOneTimeAreJoinedInTheOrderOfReading)
{
    OwnedLyrics list;
    list.Add(4000, "later");
    EXPECT_EQ(list.Add(3000, "A"), 1);
    EXPECT_EQ(list.Add(3000, "B"), 1);
    EXPECT_EQ(list.All(), (Lines{ { 3000, "A   B" }, { 4000, "later" } }));
}

TEST(LyricList, ARepeatedLineIsKeptOnceWhateverItsCase)
{
    OwnedLyrics list;
    list.Add(3000, "A");
    EXPECT_EQ(list.Add(3000, "a"), 1);
    EXPECT_EQ(list.All(), (Lines{ { 3000, "A" } }));
}

TEST(LyricList, AJoinedLineIsComparedWhole)
{
    OwnedLyrics list;
    for (const char* text : { "A", "B", "A", "a   b   A" })
        list.Add(0, text);
    EXPECT_EQ(list.All(), (Lines{ { 0, "A   B   A" } }));
}

TEST(LyricList, NoTextIsNoLine)
{
    OwnedLyrics list;
    EXPECT_EQ(list.Add(0, ""), 0);
    EXPECT_EQ(LyricList(list.items).Add(0, nullptr), 0);
    EXPECT_TRUE(LyricList(list.items).IsEmpty());
    EXPECT_TRUE(ConstLyricList(list.items).IsEmpty());
}

TEST(LyricList, TimesBelowZeroComeFirst)
{
    OwnedLyrics list;
    list.Add(0, "zero");
    list.Add(-5, "before");
    EXPECT_EQ(list.All(), (Lines{ { -5, "before" }, { 0, "zero" } }));
}

TEST(LyricList, RepeatsInARowAreRemovedButForTheFirst)
{
    OwnedLyrics list;
    int timeMs = 0;
    for (const char* text : { "a", "A", "a", "b", "a", "c", "C" })
        list.Add(timeMs++, text);
    LyricList(list.items).RemoveRepeats();
    EXPECT_EQ(list.All(), (Lines{ { 0, "a" }, { 3, "b" }, { 4, "a" }, { 5, "c" } }));
    LyricList(list.items).RemoveRepeats();
    EXPECT_EQ(LyricList(list.items).Count(), 4);
}

TEST(LyricList, RemovingRepeatsLeavesAnEmptyListAlone)
{
    OwnedLyrics list;
    LyricList(list.items).RemoveRepeats();
    EXPECT_EQ(list.All(), Lines{});
}

TEST(LyricList, NoLineIsFoundBesideTheList)
{
    OwnedLyrics list;
    list.Add(7, "a");
    const ConstLyricList view(list.items);
    EXPECT_EQ(view.Find(-1), nullptr);
    EXPECT_EQ(view.Find(1), nullptr);
    ASSERT_NE(view.Find(0), nullptr);
    EXPECT_EQ(view.Find(0)->timeMs, 7);
}

TEST(LyricList, FreeAllEmptiesTheList)
{
    OwnedLyrics list;
    list.Add(1, "a");
    LyricList(list.items).FreeAll();
    EXPECT_EQ(list.All(), Lines{});
}

TEST(IsSameLyric, LettersOfAllScriptsAreComparedWithoutCase)
{
    EXPECT_TRUE(IsSameLyric(TEXT("\u00C9t\u00E9"), TEXT("\u00E9T\u00C9")));
    EXPECT_FALSE(IsSameLyric(TEXT("a"), TEXT("aa")));
    EXPECT_FALSE(IsSameLyric(TEXT("\u554A"), TEXT("\u963F")));
}

} // namespace
