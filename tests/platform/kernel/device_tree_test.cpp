#include "platform/device_path.h"
#include "platform/device_tree.h"
#include "tests/platform/kernel/device_fixture.h"

#include <filesystem>

namespace cardsong::kernel {
namespace {

using test::Names;

class DeviceTreeTest : public test::DeviceTest {};

TEST_F(DeviceTreeTest, InstalledFilesAreSeenUnderWindows)
{
    device.WriteFile("system/Windows/gui.gif", "installed");
    EXPECT_EQ(Contents(TEXT("\\Windows\\gui.gif")), "installed");
}

TEST_F(DeviceTreeTest, TheUsersFileLiesOverTheInstalledOne)
{
    device.WriteFile("system/Windows/gui.gif", "installed");
    device.WriteFile("user/Windows/gui.gif", "mine");
    EXPECT_EQ(Contents(TEXT("\\Windows\\gui.gif")), "mine");
}

TEST_F(DeviceTreeTest, TheUsersFileWinsInAnotherSpelling)
{
    device.WriteFile("system/Windows/gui.gif", "installed");
    device.WriteFile("user/Windows/GUI.GIF", "mine");
    EXPECT_EQ(Contents(TEXT("\\Windows\\gui.gif")), "mine");
}

TEST_F(DeviceTreeTest, WritingGoesToTheUsersTreeAndMakesItsFolders)
{
    device.WriteFile("system/Windows/gui.gif", "installed");
    EXPECT_TRUE(Write(TEXT("\\Windows\\play_list.txt"), CREATE_ALWAYS, "list"));
    EXPECT_EQ(device.ReadFile("user/Windows/play_list.txt"), "list");
}

TEST_F(DeviceTreeTest, WritingMakesTheWindowsFolderOfABlankDevice)
{
    EXPECT_TRUE(Write(TEXT("\\Windows\\play_list.txt"), CREATE_ALWAYS, "list"));
    EXPECT_EQ(device.ReadFile("user/Windows/play_list.txt"), "list");
}

TEST_F(DeviceTreeTest, WritingBelowAnInstalledFolderMirrorsIt)
{
    device.WriteFile("system/Windows/Sub/a.txt", "installed");
    EXPECT_TRUE(Write(TEXT("\\Windows\\sub\\b.txt"), CREATE_ALWAYS, "mine"));
    EXPECT_EQ(device.ReadFile("user/Windows/Sub/b.txt"), "mine");
}

TEST_F(DeviceTreeTest, ChangingAnInstalledFileChangesACopy)
{
    device.WriteFile("system/Windows/a.txt", "installed");
    EXPECT_TRUE(Write(TEXT("\\Windows\\a.txt"), OPEN_EXISTING, "IN"));
    EXPECT_EQ(device.ReadFile("system/Windows/a.txt"), "installed");
    EXPECT_EQ(device.ReadFile("user/Windows/a.txt"), "INstalled");
}

TEST_F(DeviceTreeTest, ReplacingAnInstalledFileKeepsNothingOfIt)
{
    device.WriteFile("system/Windows/a.txt", "installed");
    EXPECT_TRUE(Write(TEXT("\\Windows\\a.txt"), CREATE_ALWAYS, "new"));
    EXPECT_EQ(device.ReadFile("system/Windows/a.txt"), "installed");
    EXPECT_EQ(Contents(TEXT("\\Windows\\a.txt")), "new");
}

TEST_F(DeviceTreeTest, AnInstalledFileIsNotDeleted)
{
    device.WriteFile("system/Windows/a.txt", "installed");
    EXPECT_FALSE(DeleteFileW(TEXT("\\Windows\\a.txt")));
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
}

TEST_F(DeviceTreeTest, AListingMergesBothTrees)
{
    device.WriteFile("system/Windows/a.txt");
    device.WriteFile("system/Windows/b.txt");
    device.WriteFile("user/Windows/B.TXT");
    device.WriteFile("user/Windows/c.txt");
    EXPECT_EQ(All(TEXT("\\Windows\\*.txt")), (Names{ TEXT("a.txt"), TEXT("B.TXT"), TEXT("c.txt") }));
}

// A device that wears a skin besides.
class DeviceWithASkin : public test::DeviceTest {
protected:
    DeviceWithASkin()
    {
        auto tree = CurrentDeviceTree();
        tree.skinDirectory = device.UserDirectory() + "/Skins/mine";
        InstallDeviceTree(tree);
        device.WriteFile("system/Windows/gui.gif", "installed");
    }
};

TEST_F(DeviceWithASkin, TheSkinsFileLiesOverTheInstalledOne)
{
    device.WriteFile("user/Skins/mine/gui.gif", "skin");
    EXPECT_EQ(Contents(TEXT("\\Windows\\gui.gif")), "skin");
    EXPECT_EQ(Contents(TEXT("\\windows\\GUI.GIF")), "skin");
}

TEST_F(DeviceWithASkin, TheUsersFileLiesOverTheSkins)
{
    device.WriteFile("user/Skins/mine/gui.gif", "skin");
    device.WriteFile("user/Windows/GUI.GIF", "user");
    EXPECT_EQ(Contents(TEXT("\\Windows\\gui.gif")), "user");
}

TEST_F(DeviceWithASkin, WhatTheSkinLacksIsTheInstalledOne)
{
    device.WriteFile("user/Skins/mine/other.gif", "skin");
    EXPECT_EQ(Contents(TEXT("\\Windows\\gui.gif")), "installed");
}

TEST_F(DeviceWithASkin, ASkinWhoseFolderIsGoneChangesNothing)
{
    EXPECT_EQ(Contents(TEXT("\\Windows\\gui.gif")), "installed");
    EXPECT_EQ(Contents(TEXT("\\Windows\\none.gif")), "(no file)");
}

TEST_F(DeviceWithASkin, TheSkinIsSeenUnderWindowsOnly)
{
    device.WriteFile("user/Skins/mine/extra.gif", "skin");
    EXPECT_EQ(Contents(TEXT("\\extra.gif")), "(no file)");
    EXPECT_EQ(Contents(TEXT("\\SDMMC\\extra.gif")), "(no file)");
    EXPECT_EQ(Contents(TEXT("\\Windows\\Windows\\extra.gif")), "(no file)");
}

TEST_F(DeviceWithASkin, ChangingAFileOfTheSkinChangesACopy)
{
    device.WriteFile("user/Skins/mine/gui.gif", "skin");
    EXPECT_TRUE(Write(TEXT("\\Windows\\gui.gif"), OPEN_EXISTING, "SK"));
    EXPECT_EQ(device.ReadFile("user/Skins/mine/gui.gif"), "skin");
    EXPECT_EQ(device.ReadFile("user/Windows/gui.gif"), "SKin");
}

TEST_F(DeviceWithASkin, AFileOfTheSkinIsNotDeleted)
{
    device.WriteFile("user/Skins/mine/gui.gif", "skin");
    EXPECT_FALSE(DeleteFileW(TEXT("\\Windows\\gui.gif")));
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    EXPECT_EQ(device.ReadFile("user/Skins/mine/gui.gif"), "skin");
}

TEST_F(DeviceWithASkin, WritingBelowAFolderOfTheSkinMirrorsItInTheUsersTree)
{
    device.WriteFile("user/Skins/mine/Sub/a.txt", "skin");
    EXPECT_TRUE(Write(TEXT("\\Windows\\sub\\b.txt"), CREATE_ALWAYS, "mine"));
    EXPECT_EQ(device.ReadFile("user/Windows/Sub/b.txt"), "mine");
}

TEST_F(DeviceWithASkin, AListingMergesAllThree)
{
    device.WriteFile("user/Skins/mine/GUI.gif");
    device.WriteFile("user/Skins/mine/b.gif");
    device.WriteFile("user/Windows/a.gif");
    EXPECT_EQ(All(TEXT("\\Windows\\*.gif")), (Names{ TEXT("a.gif"), TEXT("b.gif"), TEXT("GUI.gif") }));
}

TEST_F(DeviceTreeTest, ARelativePathStartsAtTheRoot)
{
    device.WriteFile("user/PocketStoreII/a.dat", "flash");
    EXPECT_EQ(Contents(TEXT("PocketStoreII\\a.dat")), "flash");
    EXPECT_EQ(Contents(TEXT("\\pocketstoreii\\A.DAT")), "flash");
}

TEST_F(DeviceTreeTest, TheFlashVolumeIsMadeAsNeeded)
{
    EXPECT_TRUE(CreateDirectoryW(TEXT("PocketStoreII\\TAVO"), nullptr));
    EXPECT_TRUE(Write(TEXT("PocketStoreII\\TAVO\\a.dat"), CREATE_ALWAYS, "x"));
    EXPECT_EQ(device.ReadFile("user/PocketStoreII/TAVO/a.dat"), "x");
}

TEST_F(DeviceTreeTest, TheCardIsReadAndWritten)
{
    device.WriteFile("card/Music/Song.mp3", "song");
    EXPECT_EQ(Contents(TEXT("\\SDMMC\\music\\song.mp3")), "song");
    EXPECT_TRUE(Write(TEXT("\\sdmmc\\note.txt"), CREATE_NEW, "note"));
    EXPECT_EQ(device.ReadFile("card/note.txt"), "note");
}

TEST_F(DeviceTreeTest, ParentNamesNeverLeaveTheTree)
{
    device.WriteFile("secret.txt", "outside");
    EXPECT_EQ(Contents(TEXT("\\..\\secret.txt")), "(no file)");
    EXPECT_EQ(Contents(TEXT("\\SDMMC\\..\\..\\secret.txt")), "(no file)");
    EXPECT_EQ(Contents(TEXT("\\SDMMC\\../../secret.txt")), "(no file)");
    device.WriteFile("user/inside.txt", "inside");
    EXPECT_EQ(Contents(TEXT("\\SDMMC\\..\\..\\..\\inside.txt")), "inside");
}

TEST_F(DeviceTreeTest, ASlashInANameIsASeparator)
{
    device.WriteFile("card/a/b.txt", "b");
    EXPECT_EQ(Contents(TEXT("\\SDMMC\\a/b.txt")), "b");
}

TEST_F(DeviceTreeTest, TheRootShowsCardAndWindowsWithoutDots)
{
    device.WriteFile("system/Windows/a.txt");
    device.WriteFile("user/z.txt");
    EXPECT_EQ(All(TEXT("\\*")), (Names{ TEXT("scratch"), TEXT("SDMMC"), TEXT("Windows"), TEXT("z.txt") }));
}

TEST_F(DeviceTreeTest, TheCardsRootHasNoDots)
{
    device.WriteFile("card/a.mp3");
    EXPECT_EQ(All(TEXT("\\SDMMC\\*.*")), (Names{ TEXT("a.mp3") }));
    device.WriteFile("card/Music/b.mp3");
    EXPECT_EQ(All(TEXT("\\SDMMC\\Music\\*.*")), (Names{ TEXT("."), TEXT(".."), TEXT("b.mp3") }));
}

// Elsewhere a path that ends in a separator finds nothing; the device answers, and its programs ask for a card this
// way.
TEST_F(DeviceTreeTest, AnEmptyCardIsFoundByItsRoot)
{
    EXPECT_EQ(All(TEXT("SDMMC\\")), (Names{ TEXT("SDMMC") }));
}

TEST_F(DeviceTreeTest, AFullCardIsFoundByItsRoot)
{
    device.WriteFile("card/a.mp3");
    EXPECT_EQ(All(TEXT("SDMMC\\")), (Names{ TEXT("SDMMC") }));
}

TEST_F(DeviceTreeTest, AFileWithASeparatorIsNotFound)
{
    device.WriteFile("card/a.mp3");
    EXPECT_EQ(All(TEXT("\\SDMMC\\a.mp3\\")), Names());
}

TEST_F(DeviceTreeTest, WithoutACardItsRootIsNotFound)
{
    DeviceTree tree = CurrentDeviceTree();
    tree.cardDirectory.clear();
    InstallDeviceTree(tree);
    EXPECT_EQ(All(TEXT("SDMMC\\")), Names());
    EXPECT_EQ(All(TEXT("\\SDMMC\\*.*")), Names());
    EXPECT_EQ(GetFileAttributesW(TEXT("\\SDMMC")), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(All(TEXT("\\*")), (Names{ TEXT("scratch") }));
}

TEST_F(DeviceTreeTest, ACardFolderThatVanishedIsNoCard)
{
    ASSERT_TRUE(std::filesystem::remove(device.CardDirectory()));
    EXPECT_EQ(All(TEXT("SDMMC\\")), Names());
}

TEST_F(DeviceTreeTest, AFileMadeAfterALookUpIsFound)
{
    device.WriteFile("card/Other.mp3");
    EXPECT_EQ(Contents(TEXT("\\SDMMC\\SONG.mp3")), "(no file)");
    device.WriteFile("card/song.mp3", "new");
    EXPECT_EQ(Contents(TEXT("\\SDMMC\\SONG.mp3")), "new");
}

TEST_F(DeviceTreeTest, AHostPathIsFoundForExistingNamesOnly)
{
    device.WriteFile("card/Song.mp3");
    const auto song = FindHostPath(TEXT("SDMMC\\SONG.mp3"));
    ASSERT_TRUE(song.has_value());
    EXPECT_TRUE(std::filesystem::equivalent(*song, device.CardDirectory() + "/Song.mp3"));
    EXPECT_EQ(FindHostPath(TEXT("SDMMC\\none.mp3")), std::nullopt);
    EXPECT_EQ(FindHostPath(TEXT("SDMMC\\Song.mp3\\")), std::nullopt);
    EXPECT_EQ(FindHostPath(TEXT("")), std::nullopt);
    const auto card = FindHostPath(TEXT("\\SDMMC\\"));
    ASSERT_TRUE(card.has_value());
    EXPECT_EQ(std::filesystem::path(*card).filename(), "card");
}

TEST(DevicePaths, AreTakenApart)
{
    const auto path = ParseDevicePath(TEXT("\\Windows\\.\\a\\..\\\\b.gif"));
    EXPECT_EQ(path.names, (Names{ TEXT("Windows"), TEXT("b.gif") }));
    EXPECT_FALSE(path.endsInSeparator);
    EXPECT_TRUE(ParseDevicePath(TEXT("SDMMC\\")).endsInSeparator);
    EXPECT_TRUE(ParseDevicePath(TEXT("\\..\\..")).IsRoot());
}

TEST_F(DeviceTreeTest, AnInstalledFileIsReadWithoutACopy)
{
    device.WriteFile("system/Windows/a.txt", "installed");
    const HANDLE file =
        CreateFileW(TEXT("\\Windows\\a.txt"), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_ALWAYS, 0, nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_ALREADY_EXISTS });
    EXPECT_TRUE(CloseHandle(file));
    EXPECT_FALSE(std::filesystem::exists(device.UserDirectory() + "/Windows/a.txt"));
}

TEST_F(DeviceTreeTest, AnInstalledFileIsNotNew)
{
    device.WriteFile("system/Windows/a.txt", "installed");
    EXPECT_FALSE(Write(TEXT("\\Windows\\A.TXT"), CREATE_NEW, "new"));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_FILE_EXISTS });
    const HANDLE file = CreateFileW(TEXT("\\Windows\\a.txt"), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_ALREADY_EXISTS });
    EXPECT_TRUE(CloseHandle(file));
    EXPECT_EQ(device.ReadFile("system/Windows/a.txt"), "installed");
}

TEST_F(DeviceTreeTest, TruncatingAnInstalledFileEmptiesACopy)
{
    device.WriteFile("system/Windows/a.txt", "installed");
    EXPECT_TRUE(Write(TEXT("\\Windows\\a.txt"), TRUNCATE_EXISTING, "x"));
    EXPECT_EQ(device.ReadFile("user/Windows/a.txt"), "x");
    EXPECT_EQ(device.ReadFile("system/Windows/a.txt"), "installed");
}

TEST_F(DeviceTreeTest, ACopyLeavesNothingBesideIt)
{
    device.WriteFile("system/Windows/a.txt", "installed");
    EXPECT_TRUE(Write(TEXT("\\Windows\\a.txt"), OPEN_EXISTING, "IN"));
    EXPECT_EQ(All(TEXT("\\Windows\\a*")), (Names{ TEXT("a.txt") }));
}

// An installed tree may be marked read only as a whole; the user's copies are not.
TEST_F(DeviceTreeTest, AReadOnlyInstalledFileIsChangedAsACopy)
{
    device.WriteFile("system/Windows/a.txt", "installed");
    const std::filesystem::path installed = device.SystemDirectory() + "/Windows/a.txt";
    std::filesystem::permissions(installed, std::filesystem::perms::owner_read);
    EXPECT_TRUE(Write(TEXT("\\Windows\\a.txt"), OPEN_EXISTING, "IN"));
    EXPECT_EQ(GetFileAttributesW(TEXT("\\Windows\\a.txt")), DWORD{ FILE_ATTRIBUTE_ARCHIVE });
    EXPECT_TRUE(Write(TEXT("\\Windows\\a.txt"), OPEN_EXISTING, "in"));
    EXPECT_EQ(device.ReadFile("user/Windows/a.txt"), "installed");
    std::filesystem::permissions(installed, std::filesystem::perms::owner_all);
}

TEST_F(DeviceTreeTest, AnInstalledFolderIsNoFileToWrite)
{
    device.WriteFile("system/Windows/Sub/a.txt", "installed");
    EXPECT_FALSE(Write(TEXT("\\Windows\\Sub"), CREATE_ALWAYS, "x"));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_ACCESS_DENIED });
    EXPECT_EQ(Contents(TEXT("\\Windows\\Sub\\a.txt")), "installed");
}

TEST_F(DeviceTreeTest, AnInstalledFileIsNoFolderToWriteIn)
{
    device.WriteFile("system/Windows/a.txt", "installed");
    EXPECT_FALSE(Write(TEXT("\\Windows\\a.txt\\b.txt"), CREATE_ALWAYS, "x"));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_PATH_NOT_FOUND });
    EXPECT_EQ(Contents(TEXT("\\Windows\\a.txt")), "installed");
}

TEST_F(DeviceTreeTest, AnInstalledFolderIsMadeAlready)
{
    device.MakeFolder("system/Windows/Sub");
    EXPECT_FALSE(CreateDirectoryW(TEXT("\\Windows\\SUB"), nullptr));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_ALREADY_EXISTS });
    EXPECT_TRUE(CreateDirectoryW(TEXT("\\Windows\\Sub\\New"), nullptr));
    EXPECT_TRUE(std::filesystem::is_directory(device.UserDirectory() + "/Windows/Sub/New"));
}

TEST_F(DeviceTreeTest, TheRuntimeChangesACopyToo)
{
    device.WriteFile("system/Windows/a.txt", "installed");
    std::FILE* const file = _wfopen(TEXT("\\Windows\\a.txt"), TEXT("r+b"));
    ASSERT_NE(file, nullptr);
    std::fwrite("IN", 1, 2, file);
    std::fclose(file);
    EXPECT_EQ(device.ReadFile("system/Windows/a.txt"), "installed");
    EXPECT_EQ(device.ReadFile("user/Windows/a.txt"), "INstalled");
    std::FILE* const appended = _wfopen(TEXT("\\Windows\\a.txt"), TEXT("ab"));
    ASSERT_NE(appended, nullptr);
    std::fwrite("!", 1, 1, appended);
    std::fclose(appended);
    EXPECT_EQ(device.ReadFile("user/Windows/a.txt"), "INstalled!");
}

TEST_F(DeviceTreeTest, TheRuntimeReadsWithoutACopy)
{
    device.WriteFile("system/Windows/a.txt", "installed");
    std::FILE* const file = _wfopen(TEXT("\\Windows\\a.txt"), TEXT("rb"));
    ASSERT_NE(file, nullptr);
    std::fclose(file);
    EXPECT_FALSE(std::filesystem::exists(device.UserDirectory() + "/Windows/a.txt"));
    EXPECT_EQ(_wfopen(TEXT("\\Windows\\a.txt"), TEXT("x")), nullptr);
    EXPECT_EQ(_wfopen(TEXT("\\Windows\\a.txt"), TEXT("")), nullptr);
    EXPECT_EQ(_wfopen(TEXT("\\Windows\\a.txt"), nullptr), nullptr);
    EXPECT_EQ(_wfopen(nullptr, TEXT("rb")), nullptr);
    EXPECT_EQ(_wfopen(TEXT("DSK3:"), TEXT("rb")), nullptr);
}

TEST_F(DeviceTreeTest, TheRootOfTheDeviceIsAFolder)
{
    EXPECT_EQ(GetFileAttributesW(TEXT("\\")) & FILE_ATTRIBUTE_DIRECTORY, DWORD{ FILE_ATTRIBUTE_DIRECTORY });
    EXPECT_FALSE(DeleteFileW(TEXT("\\")));
    EXPECT_FALSE(CreateDirectoryW(TEXT("\\"), nullptr));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_ALREADY_EXISTS });
    WIN32_FIND_DATAW data = {};
    EXPECT_EQ(FindFirstFileW(TEXT("\\"), &data), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_FILE_NOT_FOUND });
}

// A folder that merges two keeps the dots of one.
TEST_F(DeviceTreeTest, AMergedFolderHasItsDotsOnce)
{
    device.WriteFile("system/Windows/b.txt");
    device.WriteFile("user/Windows/a.txt");
    EXPECT_EQ(All(TEXT("\\Windows\\*")), (Names{ TEXT("."), TEXT(".."), TEXT("a.txt"), TEXT("b.txt") }));
}

TEST_F(DeviceTreeTest, AListingFindsWhatOnlyTheInstalledTreeHas)
{
    device.WriteFile("user/Windows/a.txt");
    device.WriteFile("system/Windows/b.gif");
    device.WriteFile("system/Windows/Sub/c.txt");
    EXPECT_EQ(All(TEXT("\\Windows\\*.gif")), (Names{ TEXT("b.gif") }));
    EXPECT_EQ(All(TEXT("\\Windows\\Sub\\*")), (Names{ TEXT("."), TEXT(".."), TEXT("c.txt") }));
}

TEST_F(DeviceTreeTest, TheRootShowsItsFoldersByPattern)
{
    device.WriteFile("system/Windows/a.txt");
    EXPECT_EQ(All(TEXT("\\W*")), (Names{ TEXT("Windows") }));
    EXPECT_EQ(All(TEXT("\\sd???")), (Names{ TEXT("SDMMC") }));
    EXPECT_EQ(All(TEXT("*.zip")), Names());
}

TEST_F(DeviceTreeTest, ACardIsNotMade)
{
    ASSERT_TRUE(std::filesystem::remove(device.CardDirectory()));
    EXPECT_FALSE(CreateDirectoryW(TEXT("\\SDMMC"), nullptr));
    EXPECT_FALSE(Write(TEXT("\\SDMMC"), CREATE_ALWAYS, "x"));
    EXPECT_FALSE(Write(TEXT("\\SDMMC\\a.txt"), CREATE_ALWAYS, "x"));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_PATH_NOT_FOUND });
    EXPECT_FALSE(std::filesystem::exists(device.CardDirectory()));
    EXPECT_FALSE(std::filesystem::exists(device.UserDirectory() + "/SDMMC"));
}

TEST_F(DeviceTreeTest, ErrorsTellWhetherTheFolderIsThere)
{
    device.MakeFolder("system/Windows/Sub");
    for (const auto* const missing :
         { TEXT("\\Windows\\none"), TEXT("\\Windows\\Sub\\none"), TEXT("\\PocketStoreII\\none"), TEXT("\\none") }) {
        EXPECT_EQ(GetFileAttributesW(missing), INVALID_FILE_ATTRIBUTES);
        EXPECT_EQ(GetLastError(), DWORD{ ERROR_FILE_NOT_FOUND });
        EXPECT_EQ(Contents(missing), "(no file)");
        EXPECT_EQ(GetLastError(), DWORD{ ERROR_FILE_NOT_FOUND });
    }
    for (const auto* const missing : { TEXT("\\Windows\\no\\none"), TEXT("\\no\\none"), TEXT("\\SDMMC\\no\\none") }) {
        EXPECT_EQ(GetFileAttributesW(missing), INVALID_FILE_ATTRIBUTES);
        EXPECT_EQ(GetLastError(), DWORD{ ERROR_PATH_NOT_FOUND });
    }
}

TEST_F(DeviceTreeTest, NothingOfThisMachineIsSeen)
{
    for (const auto* const path :
         { TEXT("\\Windows\\notepad.exe"), TEXT("\\Windows\\system32"), TEXT("\\Windows\\system.ini"),
           TEXT("\\Program Files"), TEXT("\\etc\\passwd"), TEXT("\\users"), TEXT("\\proc") }) {
        EXPECT_EQ(GetFileAttributesW(path), INVALID_FILE_ATTRIBUTES);
        EXPECT_EQ(Contents(path), "(no file)");
    }
}

TEST_F(DeviceTreeTest, OtherFormsOfPathsStayInTheTree)
{
    device.WriteFile("secret.txt", "outside");
    for (const auto* const path :
         { TEXT("C:\\Windows\\system.ini"), TEXT("C:secret.txt"), TEXT("\\\\?\\C:\\Windows\\system.ini"),
           TEXT("\\\\.\\C:"), TEXT("\\\\?\\GLOBALROOT\\Device\\Null"), TEXT("\\\\localhost\\C$\\Windows\\system.ini"),
           TEXT("\\??\\C:\\Windows\\system.ini"), TEXT("/../secret.txt"), TEXT("\\scratch\\.. \\..\\secret.txt"),
           TEXT("\\SDMMC\\.. \\secret.txt"), TEXT("\\SDMMC\\... \\..\\..\\secret.txt"), TEXT("\\SDMMC\\.. ") }) {
        SCOPED_TRACE(::testing::PrintToString(path));
        EXPECT_EQ(Contents(path), "(no file)");
        EXPECT_FALSE(Write(path, OPEN_EXISTING, "x"));
        EXPECT_EQ(GetFileAttributesW(path), INVALID_FILE_ATTRIBUTES);
    }
    EXPECT_EQ(device.ReadFile("secret.txt"), "outside");
}

TEST_F(DeviceTreeTest, AFileMadeByAnotherFormOfPathStaysInTheTree)
{
    EXPECT_TRUE(Write(TEXT("\\..\\..\\made.txt"), CREATE_ALWAYS, "x"));
    EXPECT_EQ(device.ReadFile("user/made.txt"), "x");
    EXPECT_TRUE(Write(TEXT("\\\\.\\made2.txt"), CREATE_ALWAYS, "y"));
    EXPECT_EQ(device.ReadFile("user/made2.txt"), "y");
    for (const auto* const path : { TEXT("C:\\made.txt"), TEXT("\\made.txt:stream"), TEXT("C:made.txt") })
        EXPECT_FALSE(Write(path, CREATE_ALWAYS, "z"));
    EXPECT_EQ(device.ReadFile("user/made.txt"), "x");
}

TEST_F(DeviceTreeTest, WithoutATreeThereIsNothing)
{
    InstallDeviceTree(DeviceTree{});
    EXPECT_EQ(GetFileAttributesW(TEXT("\\")), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetFileAttributesW(TEXT("\\Windows")), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(Contents(TEXT("\\Windows\\system.ini")), "(no file)");
    EXPECT_FALSE(Write(TEXT("\\made.txt"), CREATE_ALWAYS, "x"));
    EXPECT_FALSE(Write(TEXT("\\Windows\\made.txt"), CREATE_ALWAYS, "x"));
    EXPECT_FALSE(CreateDirectoryW(TEXT("\\made"), nullptr));
    EXPECT_EQ(All(TEXT("\\*")), Names());
}

} // namespace
} // namespace cardsong::kernel
