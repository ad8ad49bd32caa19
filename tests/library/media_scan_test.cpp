#include "library/media_scan.h"

#include "library/song_walk.h"
#include "tests/library/lists.h"
#include "tests/library/songs.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using cardsong::test::AddEntry;
using cardsong::test::At;
using cardsong::test::EmptyLists;
using cardsong::test::Paths;
using cardsong::test::SampleText;
using cardsong::test::ScratchDevice;

using Names = std::vector<std::string>;

class MediaScan : public testing::Test {
protected:
    // The paths that a scan of the card finds, sorted, since the file system's order is its own.
    Names Scan(const WCHAR* folder = TEXT("\\SDMMC"), bool recurse = true)
    {
        ScannedFileCount = 0;
        ScanMediaFolder(folder, &CardSongList, recurse);
        Names paths = Paths(CardSongList);
        std::sort(paths.begin(), paths.end());
        return paths;
    }

    ScratchDevice device;
    EmptyLists lists;
};

TEST_F(MediaScan, SongsOfBothKindsAreFoundInAllFolders)
{
    device.WriteFile("card/a.mp3");
    device.WriteFile("card/Music/b.wma");
    device.WriteFile("card/Music/deep/er/c.mp3");
    device.WriteFile("card/readme.txt");
    EXPECT_EQ(Scan(), (Names{ "\\SDMMC\\Music\\b.wma", "\\SDMMC\\Music\\deep\\er\\c.mp3", "\\SDMMC\\a.mp3" }));
    EXPECT_EQ(ScannedFileCount, 3u);
}

TEST_F(MediaScan, NamesAreStoredInLowerCaseAndFoldersAsTheyAre)
{
    device.WriteFile("card/Music/Song.MP3", "four");
    ASSERT_EQ(Scan(), (Names{ "\\SDMMC\\Music\\song.mp3" }));
    const MediaFileEntry& entry = At(CardSongList, 0);
    EXPECT_EQ(WString(entry.fileName), TEXT("song.mp3"));
    EXPECT_EQ(WString(entry.folder), TEXT("\\SDMMC\\Music"));
    EXPECT_EQ(entry.fileSize, 4u);
    EXPECT_EQ(entry.duration, 0.0);
    EXPECT_EQ(entry.isChecked, 0);
    EXPECT_EQ(entry.playMark, 0);
    EXPECT_EQ(entry.playedInShuffle, 0);
}

TEST_F(MediaScan, OnlyTheEndOfTheNameCounts)
{
    device.WriteFile("card/song.mp3.txt");
    device.WriteFile("card/mp3");
    device.WriteFile("card/.mp3");
    EXPECT_EQ(Scan(), (Names{ "\\SDMMC\\.mp3" }));
}

TEST_F(MediaScan, MapFoldersOfTheCardAreLeftAlone)
{
    for (const std::string folder : { "MagaNavi", "DestinatorApps", "Lingtu", "maps" })
        device.WriteFile("card/" + folder + "/" + folder + ".mp3");
    EXPECT_EQ(Scan(), Names{});
    EXPECT_EQ(ScannedFileCount, 0u);
}

TEST_F(MediaScan, MapFoldersAreEnteredElsewhereAndInOtherCase)
{
    device.WriteFile("card/Maps/a.mp3");
    device.WriteFile("card/Music/maps/b.mp3");
    EXPECT_EQ(Scan(), (Names{ "\\SDMMC\\Maps\\a.mp3", "\\SDMMC\\Music\\maps\\b.mp3" }));
}

TEST_F(MediaScan, MapFoldersAreEnteredWhenTheCardIsNamedInOtherCase)
{
    device.WriteFile("card/maps/a.mp3");
    EXPECT_EQ(Scan(TEXT("\\sdmmc")), (Names{ "\\sdmmc\\maps\\a.mp3" }));
}

TEST_F(MediaScan, OneTrailingBackslashIsTakenOff)
{
    device.WriteFile("card/maps/a.mp3");
    device.WriteFile("card/b.mp3");
    EXPECT_EQ(Scan(TEXT("\\SDMMC\\")), (Names{ "\\SDMMC\\b.mp3" }));
}

TEST_F(MediaScan, WithoutRecursionSubfoldersAreNotEntered)
{
    device.WriteFile("card/a.mp3");
    device.WriteFile("card/Music/b.mp3");
    EXPECT_EQ(Scan(TEXT("\\SDMMC"), false), (Names{ "\\SDMMC\\a.mp3" }));
}

TEST_F(MediaScan, AFolderNamedLikeASongIsAFolder)
{
    device.WriteFile("card/live.mp3/a.mp3");
    EXPECT_EQ(Scan(), (Names{ "\\SDMMC\\live.mp3\\a.mp3" }));
}

TEST_F(MediaScan, OneOfTwoFilesOfTheSameNameIsTakenAndBothAreCounted)
{
    device.WriteFile("card/One/a.mp3");
    device.WriteFile("card/Two/A.MP3");
    EXPECT_EQ(Scan().size(), 1u);
    EXPECT_EQ(ScannedFileCount, 2u);
}

TEST_F(MediaScan, ASongOfThePlayListIsNotFoundAgain)
{
    device.WriteFile("card/Music/a.mp3");
    device.WriteFile("card/Music/b.mp3");
    AddEntry(PlayList, TEXT("a.mp3"), TEXT("\\SDMMC\\Elsewhere"));
    EXPECT_EQ(Scan(), (Names{ "\\SDMMC\\Music\\b.mp3" }));
    EXPECT_EQ(ScannedFileCount, 2u);
}

TEST_F(MediaScan, ASecondScanFindsNothingNew)
{
    device.WriteFile("card/a.mp3");
    Scan();
    EXPECT_EQ(Scan().size(), 1u);
    EXPECT_EQ(ScannedFileCount, 1u);
}

TEST_F(MediaScan, AScanIntoThePlayListFillsThePlayList)
{
    device.WriteFile("card/One/a.mp3");
    device.WriteFile("card/Two/a.mp3");
    ScanMediaFolder(TEXT("\\SDMMC"), &PlayList, true);
    EXPECT_EQ(PlayList.GetCount(), 1);
    EXPECT_TRUE(CardSongList.IsEmpty());
}

TEST_F(MediaScan, AListThatIsNeitherOfTheTwoMayHoldANameTwice)
{
    device.WriteFile("card/One/a.mp3");
    device.WriteFile("card/Two/a.mp3");
    CPtrListCtrl other;
    ScanMediaFolder(TEXT("\\SDMMC"), &other, true);
    EXPECT_EQ(other.GetCount(), 2);
    SongList(other).FreeAll();
}

TEST_F(MediaScan, IsAskedBeforeEachFileAndFolderWhetherItGoesOn)
{
    device.WriteFile("card/a.mp3");
    device.WriteFile("card/b.txt");
    device.WriteFile("card/c/d.mp3");
    int asked = 0;
    ScanMediaFolder(TEXT("\\SDMMC\\c"), &CardSongList, true, [&asked] { return ++asked > 0; });
    const int askedForAFolder = asked; // what the system tells of the folder itself counts too
    EXPECT_GE(askedForAFolder, 1);
    asked = 0;
    ScanMediaFolder(TEXT("\\SDMMC"), &CardSongList, true, [&asked] { return ++asked > 0; });
    EXPECT_EQ(CardSongList.GetCount(), 2);
    EXPECT_GE(asked, 3 + askedForAFolder);
}

TEST_F(MediaScan, EndedFromOutsideKeepsWhatItFound)
{
    for (const char* name : { "a.mp3", "b.mp3", "deep/c.mp3", "deep/d.mp3", "z.mp3" })
        device.WriteFile(std::string("card/") + name);
    ScannedFileCount = 0;
    ScanMediaFolder(TEXT("\\SDMMC"), &CardSongList, true, [] { return CardSongList.GetCount() < 3; });
    EXPECT_EQ(CardSongList.GetCount(), 3);
    EXPECT_EQ(ScannedFileCount, 3u);
}

TEST_F(MediaScan, ANullListAddsAndCountsNothing)
{
    device.WriteFile("card/Music/a.mp3");
    ScannedFileCount = 7;
    ScanMediaFolder(TEXT("\\SDMMC"), nullptr, true);
    EXPECT_TRUE(CardSongList.IsEmpty());
    EXPECT_TRUE(PlayList.IsEmpty());
    EXPECT_EQ(ScannedFileCount, 7u);
}

TEST_F(MediaScan, ANullOrMissingFolderAddsNothing)
{
    EXPECT_EQ(Scan(nullptr), Names{});
    EXPECT_EQ(Scan(TEXT("\\SDMMC\\missing")), Names{});
    EXPECT_EQ(Scan(TEXT("")), Names{});
}

TEST_F(MediaScan, TheCountGoesOnOverScans)
{
    device.WriteFile("card/a.mp3");
    ScannedFileCount = 5;
    ScanMediaFolder(TEXT("\\SDMMC"), &CardSongList, true);
    EXPECT_EQ(ScannedFileCount, 6u);
}

TEST_F(MediaScan, PlayTimesAreWholeSecondsOfEachKind)
{
    device.WriteFile("card/ten.mp3", cardsong::test::SongOfTenSeconds());
    device.WriteFile("card/seven.WMA", SampleText("wma/large_object_before_data.wma"));
    device.WriteFile("card/text.mp3", "no song");
    device.WriteFile("card/text.wma", "no song");
    Scan();
    ASSERT_EQ(CardSongList.GetCount(), 4);
    for (std::int32_t i = 0; i < 4; ++i) {
        const MediaFileEntry& entry = At(CardSongList, i);
        const WString name(entry.fileName);
        const double expected = name == TEXT("ten.mp3") ? 10.0 : name == TEXT("seven.wma") ? 7.0 : 0.0;
        EXPECT_EQ(entry.duration, expected);
    }
}

TEST_F(MediaScan, SongsInPathsTooLongAreLeftOutAndNothingIsCut)
{
    const std::string folder(120, 'd');
    // "\SDMMC" and two folders of 120 units and their backslashes are 248 units.
    device.WriteFile("card/" + folder + "/" + folder + "/123456.mp3"); // 259
    device.WriteFile("card/" + folder + "/" + folder + "/1234567.mp3");
    device.WriteFile("card/near.mp3");
    const Names paths = Scan();
    ASSERT_EQ(paths.size(), 2u);
    EXPECT_EQ(paths[0].size(), 259u);
    EXPECT_EQ(paths[0].substr(249), "123456.mp3");
    EXPECT_EQ(ScannedFileCount, 2u);
}

TEST_F(MediaScan, FoldersTooDeepEndTheWalk)
{
    std::string folder = "card";
    for (int depth = 0; depth < 20; ++depth)
        folder += "/" + std::string(20, 'd');
    device.WriteFile(folder + "/a.mp3");
    device.WriteFile("card/near.mp3");
    EXPECT_EQ(Scan(), (Names{ "\\SDMMC\\near.mp3" }));
}

TEST_F(MediaScan, SongsStandInTheOrderInWhichTheFoldersTellThem)
{
    for (const std::string name : { "c.mp3", "a.mp3", "Z/b.mp3", "B/d.wma", "B/deep/e.mp3" })
        device.WriteFile("card/" + name);
    std::vector<WString> told;
    WalkSongs(TEXT("\\SDMMC"), Subfolders::Walk,
              [&told](const FoundSong& song) { told.push_back(WString(song.name)); });
    ScanMediaFolder(TEXT("\\SDMMC"), &CardSongList, true);
    ASSERT_EQ(told.size(), 5u);
    ASSERT_EQ(CardSongList.GetCount(), 5);
    for (std::int32_t i = 0; i < 5; ++i)
        EXPECT_EQ(WString(At(CardSongList, i).fileName), told[static_cast<std::size_t>(i)]);
}

TEST_F(MediaScan, OfTwoFilesOfTheSameNameTheFirstToldIsTaken)
{
    device.WriteFile("card/One/a.mp3");
    device.WriteFile("card/Two/a.mp3");
    std::vector<WString> folders;
    WalkSongs(TEXT("\\SDMMC"), Subfolders::Walk,
              [&folders](const FoundSong& song) { folders.push_back(WString(song.folder)); });
    Scan();
    ASSERT_EQ(folders.size(), 2u);
    ASSERT_EQ(CardSongList.GetCount(), 1);
    EXPECT_EQ(WString(At(CardSongList, 0).folder), folders[0]);
}

} // namespace
