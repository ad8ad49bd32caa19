#include "library/file_names.h"

#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::ScratchDevice;

TEST(HasExtension, ComparesTheEndWithoutCase)
{
    EXPECT_EQ(HasExtension(TEXT("song.mp3"), TEXT(".mp3")), 1);
    EXPECT_EQ(HasExtension(TEXT("Song.MP3"), TEXT(".mp3")), 1);
    EXPECT_EQ(HasExtension(TEXT("song.mp3"), TEXT(".Mp3")), 1);
    EXPECT_EQ(HasExtension(TEXT(".mp3"), TEXT(".mp3")), 1);
    EXPECT_EQ(HasExtension(TEXT("song.mp3.txt"), TEXT(".mp3")), 0);
    EXPECT_EQ(HasExtension(TEXT("song.mp4"), TEXT(".mp3")), 0);
}

TEST(HasExtension, IsNotThereWhenEmptyOrLongerThanTheName)
{
    EXPECT_EQ(HasExtension(TEXT("song.mp3"), TEXT("")), 0);
    EXPECT_EQ(HasExtension(TEXT(""), TEXT("")), 0);
    EXPECT_EQ(HasExtension(TEXT("mp3"), TEXT(".mp3")), 0);
    EXPECT_EQ(HasExtension(nullptr, TEXT(".mp3")), 0);
    EXPECT_EQ(HasExtension(TEXT("song.mp3"), nullptr), 0);
}

TEST(GetFileNameFromPath, IsWhatFollowsTheLastBackslash)
{
    PathBuffer name;
    EXPECT_EQ(GetFileNameFromPath(TEXT("\\SDMMC\\Music\\song.mp3"), name), 1);
    EXPECT_EQ(WString(name), TEXT("song.mp3"));
    EXPECT_EQ(GetFileNameFromPath(TEXT("\\x"), name), 1);
    EXPECT_EQ(WString(name), TEXT("x"));
}

TEST(GetFileNameFromPath, OfAPathWithoutBackslashIsThePath)
{
    PathBuffer name;
    EXPECT_EQ(GetFileNameFromPath(TEXT("song.mp3"), name), 1);
    EXPECT_EQ(WString(name), TEXT("song.mp3"));
}

TEST(GetFileNameFromPath, OfNullOrAFolderIsEmpty)
{
    PathBuffer name = { TEXT('x') };
    EXPECT_EQ(GetFileNameFromPath(TEXT("\\SDMMC\\"), name), 0);
    EXPECT_EQ(WString(name), TEXT(""));
    name[0] = TEXT('x');
    EXPECT_EQ(GetFileNameFromPath(nullptr, name), 0);
    EXPECT_EQ(WString(name), TEXT(""));
    EXPECT_EQ(GetFileNameFromPath(TEXT(""), name), 0);
}

TEST(GetFileNameFromPath, IsCutToFit)
{
    PathBuffer name;
    EXPECT_EQ(GetFileNameFromPath((TEXT("\\") + WString(400, TEXT('x'))).c_str(), name), 1);
    EXPECT_EQ(WString(name), WString(259, TEXT('x')));
}

TEST(GetFileNameFromPath, LooksForTheBackslashInTheFirst260UnitsOnly)
{
    PathBuffer name;
    const WString longName(258, TEXT('x'));
    GetFileNameFromPath((TEXT("\\") + longName + TEXT("\\ab")).c_str(), name); // at unit 259, the last one that counts
    EXPECT_EQ(WString(name), TEXT("ab"));
    GetFileNameFromPath((TEXT("\\") + longName + TEXT("y\\ab")).c_str(), name);
    EXPECT_EQ(WString(name), longName + TEXT("y"));
}

TEST(StripExtension, EndsTheNameAtItsLastDot)
{
    PathBuffer name;
    EXPECT_EQ(StripExtension(TEXT("a.b.mp3"), name), 1);
    EXPECT_EQ(WString(name), TEXT("a.b"));
    EXPECT_EQ(StripExtension(TEXT("song"), name), 1);
    EXPECT_EQ(WString(name), TEXT("song"));
}

TEST(StripExtension, MayWorkInPlace)
{
    PathBuffer name = { TEXT('a'), TEXT('.'), TEXT('b') };
    EXPECT_EQ(StripExtension(name, name), 1);
    EXPECT_EQ(WString(name), TEXT("a"));
}

TEST(StripExtension, OfNullOrAnExtensionAloneIsEmpty)
{
    PathBuffer name = { TEXT('x') };
    EXPECT_EQ(StripExtension(TEXT(".mp3"), name), 0);
    EXPECT_EQ(WString(name), TEXT(""));
    EXPECT_EQ(StripExtension(TEXT(""), name), 0);
    EXPECT_EQ(StripExtension(nullptr, name), 0);
}

TEST(FileExists, TellsFilesFromFoldersAndFromNothing)
{
    ScratchDevice device;
    device.WriteFile("user/scratch/song.mp3", "x");
    device.MakeFolder("user/scratch/folder");
    EXPECT_EQ(FileExists(device.Path(TEXT("song.mp3")).c_str()), 1);
    EXPECT_EQ(FileExists(device.Path(TEXT("SONG.mp3")).c_str()), 1);
    EXPECT_EQ(FileExists(device.Path(TEXT("song.mp3\\")).c_str()), 1);
    EXPECT_EQ(FileExists(device.Path(TEXT("folder")).c_str()), 0);
    EXPECT_EQ(FileExists(device.Path(TEXT("folder\\")).c_str()), 0);
    EXPECT_EQ(FileExists(device.Path(TEXT("missing.mp3")).c_str()), 0);
    EXPECT_EQ(FileExists(nullptr), 0);
    EXPECT_EQ(FileExists(TEXT("")), 0);
}

TEST(FileExists, TakesOffOneBackslashOnly)
{
    ScratchDevice device;
    device.WriteFile("user/scratch/song.mp3", "x");
    EXPECT_EQ(FileExists(device.Path(TEXT("song.mp3\\\\")).c_str()), 0);
}

} // namespace
