#include "lyrics/lyrics_folder.h"

#include "tests/lyrics/lyric_lines.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::ScratchDevice;
using cardsong::test::Utf8;
using cardsong::test::Wide;

class LyricsFolder : public ::testing::Test {
protected:
    static void Ensure(std::string_view path) { EnsureFolder(Wide(path)); }
    static bool IsFolder(std::string_view path)
    {
        const DWORD attributes = GetFileAttributesW(Wide(path).c_str());
        return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    }

    ScratchDevice device;
};

TEST_F(LyricsFolder, LiesInTheUsersDocuments)
{
    EXPECT_EQ(Utf8(DefaultLyricsFolder()), "\\My Documents\\Lyrics");
    EXPECT_TRUE(IsFolder("\\My Documents"));
    EXPECT_FALSE(IsFolder("\\My Documents\\Lyrics"));
}

TEST_F(LyricsFolder, WithoutDocumentsItHasAPlaceOfItsOwn)
{
    device.WriteFile("user/My Documents", "a file");
    EXPECT_EQ(Utf8(DefaultLyricsFolder()), "\\My Document\\Lyrics");
}

TEST_F(LyricsFolder, AMissingFolderIsMadeWithAllAboveIt)
{
    Ensure("\\a\\b\\c");
    EXPECT_TRUE(IsFolder("\\a\\b\\c"));
    Ensure("\\a\\b\\d\\");
    EXPECT_TRUE(IsFolder("\\a\\b\\d"));
}

TEST_F(LyricsFolder, AFolderThatIsThereStays)
{
    device.WriteFile("user/a/b.txt", "kept");
    Ensure("\\a");
    Ensure("\\A\\");
    EXPECT_EQ(device.ReadFile("user/a/b.txt"), "kept");
}

TEST_F(LyricsFolder, OfAFileItsFolderIsMeant)
{
    device.WriteFile("user/a/b.txt", "kept");
    Ensure("\\a\\b.txt");
    Ensure("\\a\\b.txt\\");
    EXPECT_EQ(device.ReadFile("user/a/b.txt"), "kept");
    EXPECT_FALSE(IsFolder("\\a\\b.txt"));
}

TEST_F(LyricsFolder, BelowAFileNothingIsMade)
{
    device.WriteFile("user/a", "kept");
    Ensure("\\a\\b\\c");
    EXPECT_EQ(device.ReadFile("user/a"), "kept");
    EXPECT_FALSE(IsFolder("\\a\\b"));
}

TEST_F(LyricsFolder, TheCardIsThereEvenWhenEmpty)
{
    Ensure("\\SDMMC");
    Ensure("\\SDMMC\\Lyrics");
    EXPECT_TRUE(IsFolder("\\SDMMC\\Lyrics"));
    EXPECT_TRUE(std::filesystem::is_directory(device.CardDirectory() + "/Lyrics"));
}

TEST_F(LyricsFolder, PathsThatNameNoFolderChangeNothing)
{
    for (const char* path : { "", "\\", "\\\\", "\\*", "\\a?\\b", "\\a:\\b", "*.*" })
        Ensure(path);
    EXPECT_TRUE(std::filesystem::is_empty(device.UserDirectory() + "/scratch"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(device.UserDirectory()), {}), 1) << "scratch alone";
}

TEST_F(LyricsFolder, APathTooLongForTheSystemIsLeftAlone)
{
    std::string path;
    while (path.size() < 259)
        path += "\\a";
    Ensure(path);
    EXPECT_FALSE(IsFolder("\\a"));
    Ensure(path.substr(0, 8));
    EXPECT_TRUE(IsFolder("\\a\\a\\a\\a"));
}

} // namespace
