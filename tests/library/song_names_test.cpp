#include "library/song_names.h"

#include "tests/library/lists.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

namespace {

using cardsong::test::AddEntry;
using cardsong::test::At;
using cardsong::test::EmptyLists;

class SongNamesTest : public testing::Test {
    EmptyLists m_lists;
};

TEST_F(SongNamesTest, ANameIsNewUntilEitherListHoldsIt)
{
    MediaFileEntry entry;
    entry.fileName[0] = TEXT('a');
    EXPECT_EQ(IsNewSongName(entry), 1);
    AddEntry(PlayList, TEXT("b"), TEXT("\\x"));
    AddEntry(PlayList, TEXT("a"), TEXT("\\x"));
    EXPECT_EQ(IsNewSongName(entry), 0);
    EmptyLists::Clear();
    AddEntry(CardSongList, TEXT("b"), TEXT(""));
    AddEntry(CardSongList, TEXT("a"), TEXT(""));
    EXPECT_EQ(IsNewSongName(entry), 0);
}

TEST_F(SongNamesTest, ANameOfOtherCaseOrLengthIsNew)
{
    MediaFileEntry entry;
    entry.fileName[0] = TEXT('a');
    AddEntry(PlayList, TEXT("A"), TEXT("\\x"));
    AddEntry(CardSongList, TEXT("ab"), TEXT("\\x"));
    EXPECT_EQ(IsNewSongName(entry), 1);
}

TEST_F(SongNamesTest, TheSetOfNamesAnswersLikeTheLists)
{
    std::mt19937 random(7);
    const auto randomName = [&random] {
        return WString(1 + random() % 2, static_cast<WCHAR>(TEXT('a') + random() % 26));
    };
    for (int i = 0; i < 15; ++i) {
        AddEntry(PlayList, randomName(), TEXT("\\x"));
        AddEntry(CardSongList, randomName(), TEXT("\\x"));
    }
    SongNames names;
    AddEntry(PlayList, TEXT("added"), TEXT("\\x"));
    names.Add(PlayList, At(PlayList, 15));
    int known = 0;
    for (int i = 0; i < 300; ++i) {
        const std::unique_ptr<MediaFileEntry> entry = NewMediaEntry(i == 0 ? TEXT("added") : randomName(), TEXT("\\y"));
        EXPECT_EQ(names.Contains(*entry), IsNewSongName(*entry) == 0);
        known += names.Contains(*entry) ? 1 : 0;
    }
    EXPECT_GT(known, 50);
    EXPECT_LT(known, 250);
}

} // namespace
