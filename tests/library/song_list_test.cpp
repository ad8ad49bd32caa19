#include "library/song_list.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class SongListTest : public testing::Test {
protected:
    ~SongListTest() override { songs.FreeAll(); }
    MediaFileEntry& Append(WStringView name) { return songs.Append(NewMediaEntry(name, TEXT("\\SDMMC"))); }
    std::vector<WString> Names() const
    {
        std::vector<WString> names;
        for (const MediaFileEntry& entry : songs)
            names.push_back(entry.fileName);
        return names;
    }

    CPtrListCtrl list;
    SongList songs{ list };
    ConstSongList read{ list };
};

using Names = std::vector<WString>;

TEST_F(SongListTest, OfAnEmptyListHasNoEntries)
{
    EXPECT_EQ(songs.Count(), 0);
    EXPECT_TRUE(songs.IsEmpty());
    EXPECT_EQ(read.Count(), 0);
    EXPECT_TRUE(read.IsEmpty());
    EXPECT_EQ(Names(), ::Names{});
    EXPECT_TRUE(read.begin() == read.end());
}

TEST_F(SongListTest, AnAppendedEntryIsTheLastOfTheList)
{
    Append(TEXT("a.mp3"));
    MediaFileEntry& second = Append(TEXT("b.mp3"));
    EXPECT_EQ(songs.Count(), 2);
    EXPECT_FALSE(songs.IsEmpty());
    EXPECT_EQ(read.Count(), 2);
    EXPECT_FALSE(read.IsEmpty());
    EXPECT_EQ(list.GetTail(), &second);
    EXPECT_EQ(&songs.At(1), &second);
    EXPECT_EQ(&read.At(1), &second);
}

TEST_F(SongListTest, IsWalkedFromTheFirstEntryToTheLast)
{
    for (const WCHAR* name : { TEXT("a"), TEXT("b"), TEXT("c") })
        Append(name);
    EXPECT_EQ(Names(), (::Names{ TEXT("a"), TEXT("b"), TEXT("c") }));
    std::int32_t index = 0;
    for (const MediaFileEntry& entry : read)
        EXPECT_EQ(&entry, list.GetAt(index++));
    EXPECT_EQ(index, 3);
}

TEST_F(SongListTest, EntriesCanBeChangedWhileTheListIsWalked)
{
    Append(TEXT("a"));
    Append(TEXT("b"));
    for (MediaFileEntry& entry : songs)
        entry.playMark = 7;
    EXPECT_EQ(read.At(0).playMark, 7);
    EXPECT_EQ(read.At(1).playMark, 7);
}

TEST_F(SongListTest, FindsNothingOutsideTheListAndWhereItHoldsANull)
{
    MediaFileEntry& first = Append(TEXT("a"));
    list.Add(static_cast<void*>(nullptr), -1);
    EXPECT_EQ(songs.Find(0), &first);
    EXPECT_EQ(read.Find(0), &first);
    for (const std::int32_t index : { -1, 1, 2 }) {
        EXPECT_EQ(songs.Find(index), nullptr) << index;
        EXPECT_EQ(read.Find(index), nullptr) << index;
    }
}

TEST_F(SongListTest, ATakenEntryIsTheCallersAndNoLongerInTheList)
{
    Append(TEXT("a"));
    MediaFileEntry& second = Append(TEXT("b"));
    Append(TEXT("c"));
    const std::unique_ptr<MediaFileEntry> taken = songs.Take(1);
    EXPECT_EQ(taken.get(), &second);
    EXPECT_EQ(WString(taken->fileName), TEXT("b"));
    EXPECT_EQ(Names(), (::Names{ TEXT("a"), TEXT("c") }));
}

TEST_F(SongListTest, NothingIsTakenFromOutsideTheList)
{
    Append(TEXT("a"));
    EXPECT_EQ(songs.Take(-1), nullptr);
    EXPECT_EQ(songs.Take(1), nullptr);
    EXPECT_EQ(songs.Count(), 1);
}

// Whether each was freed, and once, the sanitizer of addresses tells.
TEST_F(SongListTest, FreeingAllEntriesEmptiesTheList)
{
    Append(TEXT("a"));
    Append(TEXT("b"));
    songs.FreeAll();
    EXPECT_TRUE(list.IsEmpty());
    songs.FreeAll();
    EXPECT_TRUE(list.IsEmpty());
}

TEST_F(SongListTest, ANullInTheListIsNothingToFree)
{
    Append(TEXT("a"));
    list.Add(static_cast<void*>(nullptr), 0);
    songs.FreeAll();
    EXPECT_TRUE(list.IsEmpty());
}

} // namespace
