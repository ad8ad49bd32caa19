#include "platform/device_tree.h"
#include "platform/linux/ce/kernel.h"
#include "platform/linux/kernel/device_paths.h"
#include "platform/linux/kernel/host_names.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

namespace cardsong::kernel {
namespace {

using Names = std::vector<WString>;

class DeviceTreeTest : public ::testing::Test {
protected:
    Names All(const WString& pattern)
    {
        Names names;
        WIN32_FIND_DATAW data = {};
        const HANDLE find = FindFirstFileW(pattern.c_str(), &data);
        if (find == INVALID_HANDLE_VALUE)
            return names;
        do
            names.emplace_back(data.cFileName);
        while (FindNextFileW(find, &data));
        EXPECT_TRUE(FindClose(find));
        return names;
    }
    std::string Contents(const WString& path)
    {
        const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, 3, nullptr, OPEN_EXISTING, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE)
            return "(no file)";
        char buffer[64] = {};
        DWORD got = 0;
        EXPECT_TRUE(ReadFile(file, buffer, sizeof buffer, &got, nullptr));
        EXPECT_TRUE(CloseHandle(file));
        return std::string(buffer, got);
    }
    bool Write(const WString& path, DWORD disposition, std::string_view text)
    {
        const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 3, nullptr, disposition, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE)
            return false;
        DWORD done = 0;
        EXPECT_TRUE(WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &done, nullptr));
        return CloseHandle(file) != FALSE;
    }
    std::string CardPath(const std::string& name) const { return device.CardDirectory() + "/" + name; }

    test::ScratchDevice device;
};

TEST_F(DeviceTreeTest, InstalledFilesAreSeenUnderWindows)
{
    device.WriteFile("system/Windows/gui.gif", "installed");
    EXPECT_EQ(Contents(u"\\Windows\\gui.gif"), "installed");
}

TEST_F(DeviceTreeTest, TheUsersFileLiesOverTheInstalledOne)
{
    device.WriteFile("system/Windows/gui.gif", "installed");
    device.WriteFile("user/Windows/gui.gif", "mine");
    EXPECT_EQ(Contents(u"\\Windows\\gui.gif"), "mine");
}

TEST_F(DeviceTreeTest, TheUsersFileWinsInAnotherSpelling)
{
    device.WriteFile("system/Windows/gui.gif", "installed");
    device.WriteFile("user/Windows/GUI.GIF", "mine");
    EXPECT_EQ(Contents(u"\\Windows\\gui.gif"), "mine");
}

TEST_F(DeviceTreeTest, WritingGoesToTheUsersTreeAndMakesItsFolders)
{
    device.WriteFile("system/Windows/gui.gif", "installed");
    EXPECT_TRUE(Write(u"\\Windows\\play_list.txt", CREATE_ALWAYS, "list"));
    EXPECT_EQ(device.ReadFile("user/Windows/play_list.txt"), "list");
}

TEST_F(DeviceTreeTest, WritingMakesTheWindowsFolderOfABlankDevice)
{
    EXPECT_TRUE(Write(u"\\Windows\\play_list.txt", CREATE_ALWAYS, "list"));
    EXPECT_EQ(device.ReadFile("user/Windows/play_list.txt"), "list");
}

TEST_F(DeviceTreeTest, WritingBelowAnInstalledFolderMirrorsIt)
{
    device.WriteFile("system/Windows/Sub/a.txt", "installed");
    EXPECT_TRUE(Write(u"\\Windows\\sub\\b.txt", CREATE_ALWAYS, "mine"));
    EXPECT_EQ(device.ReadFile("user/Windows/Sub/b.txt"), "mine");
}

TEST_F(DeviceTreeTest, ChangingAnInstalledFileChangesACopy)
{
    device.WriteFile("system/Windows/a.txt", "installed");
    EXPECT_TRUE(Write(u"\\Windows\\a.txt", OPEN_EXISTING, "IN"));
    EXPECT_EQ(device.ReadFile("system/Windows/a.txt"), "installed");
    EXPECT_EQ(device.ReadFile("user/Windows/a.txt"), "INstalled");
}

TEST_F(DeviceTreeTest, ReplacingAnInstalledFileKeepsNothingOfIt)
{
    device.WriteFile("system/Windows/a.txt", "installed");
    EXPECT_TRUE(Write(u"\\Windows\\a.txt", CREATE_ALWAYS, "new"));
    EXPECT_EQ(device.ReadFile("system/Windows/a.txt"), "installed");
    EXPECT_EQ(Contents(u"\\Windows\\a.txt"), "new");
}

TEST_F(DeviceTreeTest, AnInstalledFileIsNotDeleted)
{
    device.WriteFile("system/Windows/a.txt", "installed");
    EXPECT_FALSE(DeleteFileW(u"\\Windows\\a.txt"));
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
}

TEST_F(DeviceTreeTest, AListingMergesBothTrees)
{
    device.WriteFile("system/Windows/a.txt");
    device.WriteFile("system/Windows/b.txt");
    device.WriteFile("user/Windows/B.TXT");
    device.WriteFile("user/Windows/c.txt");
    EXPECT_EQ(All(u"\\Windows\\*.txt"), (Names{ u"a.txt", u"B.TXT", u"c.txt" }));
}

TEST_F(DeviceTreeTest, ARelativePathStartsAtTheRoot)
{
    device.WriteFile("user/PocketStoreII/a.dat", "flash");
    EXPECT_EQ(Contents(u"PocketStoreII\\a.dat"), "flash");
    EXPECT_EQ(Contents(u"\\pocketstoreii\\A.DAT"), "flash");
}

TEST_F(DeviceTreeTest, TheFlashVolumeIsMadeAsNeeded)
{
    EXPECT_TRUE(CreateDirectoryW(u"PocketStoreII\\TAVO", nullptr));
    EXPECT_TRUE(Write(u"PocketStoreII\\TAVO\\a.dat", CREATE_ALWAYS, "x"));
    EXPECT_EQ(device.ReadFile("user/PocketStoreII/TAVO/a.dat"), "x");
}

TEST_F(DeviceTreeTest, TheCardIsReadAndWritten)
{
    device.WriteFile("card/Music/Song.mp3", "song");
    EXPECT_EQ(Contents(u"\\SDMMC\\music\\song.mp3"), "song");
    EXPECT_TRUE(Write(u"\\sdmmc\\note.txt", CREATE_NEW, "note"));
    EXPECT_EQ(device.ReadFile("card/note.txt"), "note");
}

TEST_F(DeviceTreeTest, ParentNamesNeverLeaveTheTree)
{
    device.WriteFile("secret.txt", "outside");
    EXPECT_EQ(Contents(u"\\..\\secret.txt"), "(no file)");
    EXPECT_EQ(Contents(u"\\SDMMC\\..\\..\\secret.txt"), "(no file)");
    EXPECT_EQ(Contents(u"\\SDMMC\\../../secret.txt"), "(no file)");
    device.WriteFile("user/inside.txt", "inside");
    EXPECT_EQ(Contents(u"\\SDMMC\\..\\..\\..\\inside.txt"), "inside");
}

TEST_F(DeviceTreeTest, ASlashInANameIsASeparator)
{
    device.WriteFile("card/a/b.txt", "b");
    EXPECT_EQ(Contents(u"\\SDMMC\\a/b.txt"), "b");
}

TEST_F(DeviceTreeTest, TheRootShowsCardAndWindowsWithoutDots)
{
    device.WriteFile("system/Windows/a.txt");
    device.WriteFile("user/z.txt");
    EXPECT_EQ(All(u"\\*"), (Names{ u"scratch", u"SDMMC", u"Windows", u"z.txt" }));
}

TEST_F(DeviceTreeTest, TheCardsRootHasNoDots)
{
    device.WriteFile("card/a.mp3");
    EXPECT_EQ(All(u"\\SDMMC\\*.*"), (Names{ u"a.mp3" }));
    device.WriteFile("card/Music/b.mp3");
    EXPECT_EQ(All(u"\\SDMMC\\Music\\*.*"), (Names{ u".", u"..", u"b.mp3" }));
}

// Elsewhere a path that ends in a separator finds nothing; the device answers, and its programs ask for a card this
// way.
TEST_F(DeviceTreeTest, AnEmptyCardIsFoundByItsRoot)
{
    EXPECT_EQ(All(u"SDMMC\\"), (Names{ u"SDMMC" }));
}

TEST_F(DeviceTreeTest, AFullCardIsFoundByItsRoot)
{
    device.WriteFile("card/a.mp3");
    EXPECT_EQ(All(u"SDMMC\\"), (Names{ u"SDMMC" }));
}

TEST_F(DeviceTreeTest, AFileWithASeparatorIsNotFound)
{
    device.WriteFile("card/a.mp3");
    EXPECT_EQ(All(u"\\SDMMC\\a.mp3\\"), Names());
}

TEST_F(DeviceTreeTest, WithoutACardItsRootIsNotFound)
{
    DeviceTree tree = CurrentDeviceTree();
    tree.cardDirectory.clear();
    InstallDeviceTree(tree);
    EXPECT_EQ(All(u"SDMMC\\"), Names());
    EXPECT_EQ(All(u"\\SDMMC\\*.*"), Names());
    EXPECT_EQ(GetFileAttributesW(u"\\SDMMC"), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(All(u"\\*"), (Names{ u"scratch" }));
}

TEST_F(DeviceTreeTest, ACardFolderThatVanishedIsNoCard)
{
    ASSERT_EQ(rmdir(device.CardDirectory().c_str()), 0);
    EXPECT_EQ(All(u"SDMMC\\"), Names());
}

TEST_F(DeviceTreeTest, NamesThatAreNotUtf8AreListedAndOpened)
{
    const std::string gb2312 = "\xB8\xE8\xC7\xFA.mp3";
    device.WriteFile("card/" + gb2312, "song");
    const auto names = All(u"\\SDMMC\\*.mp3");
    ASSERT_EQ(names.size(), 1U);
    EXPECT_EQ(names[0], u"\xDCB8\xDCE8\xDCC7\xDCFA.mp3");
    EXPECT_EQ(Contents(u"\\SDMMC\\" + names[0]), "song");
}

TEST_F(DeviceTreeTest, ANameWithABackslashIsListedAndOpened)
{
    device.WriteFile("card/AC\\DC.mp3", "song");
    const auto names = All(u"\\SDMMC\\*");
    ASSERT_EQ(names.size(), 1U);
    EXPECT_EQ(names[0], u"AC\uF05CDC.mp3");
    EXPECT_EQ(Contents(u"\\SDMMC\\" + names[0]), "song");
}

TEST_F(DeviceTreeTest, OfTwoSpellingsTheExactOneIsOpened)
{
    device.WriteFile("card/a.mp3", "lower");
    device.WriteFile("card/A.mp3", "upper");
    EXPECT_EQ(Contents(u"\\SDMMC\\a.mp3"), "lower");
    EXPECT_EQ(Contents(u"\\SDMMC\\A.mp3"), "upper");
    EXPECT_EQ(Contents(u"\\SDMMC\\A.MP3"), "upper");
}

TEST_F(DeviceTreeTest, AFileMadeAfterALookUpIsFound)
{
    device.WriteFile("card/Other.mp3");
    EXPECT_EQ(Contents(u"\\SDMMC\\SONG.mp3"), "(no file)");
    device.WriteFile("card/song.mp3", "new");
    EXPECT_EQ(Contents(u"\\SDMMC\\SONG.mp3"), "new");
}

TEST_F(DeviceTreeTest, AnUnchangedFolderIsReadOnceAndStillAnswersRight)
{
    device.WriteFile("card/Song.mp3", "song");
    const timespec longAgo[2] = { { 1'000'000'000, 0 }, { 1'000'000'000, 0 } };
    ASSERT_EQ(utimensat(AT_FDCWD, device.CardDirectory().c_str(), longAgo, 0), 0);
    EXPECT_EQ(Contents(u"\\SDMMC\\song.MP3"), "song");
    EXPECT_EQ(Contents(u"\\SDMMC\\song.MP3"), "song");
    ASSERT_EQ(rename(CardPath("Song.mp3").c_str(), CardPath("Tune.mp3").c_str()), 0);
    EXPECT_EQ(Contents(u"\\SDMMC\\song.MP3"), "(no file)");
    EXPECT_EQ(Contents(u"\\SDMMC\\tune.MP3"), "song");
}

TEST_F(DeviceTreeTest, LinksAreFollowed)
{
    device.WriteFile("elsewhere/song.mp3", "song");
    ASSERT_EQ(symlink("../elsewhere", CardPath("link").c_str()), 0);
    EXPECT_EQ(Contents(u"\\SDMMC\\link\\song.mp3"), "song");
    EXPECT_EQ(All(u"\\SDMMC\\*"), (Names{ u"link" }));
}

TEST_F(DeviceTreeTest, ALinkThatLeadsBackIsNotListed)
{
    device.WriteFile("card/a/song.mp3");
    device.MakeFolder("card/b");
    ASSERT_EQ(symlink(".", CardPath("self").c_str()), 0);
    ASSERT_EQ(symlink("../b", CardPath("a/toB").c_str()), 0);
    ASSERT_EQ(symlink("../a", CardPath("b/toA").c_str()), 0);
    EXPECT_EQ(All(u"\\SDMMC\\*"), (Names{ u"a", u"b" }));
    EXPECT_EQ(All(u"\\SDMMC\\a\\*"), (Names{ u".", u"..", u"song.mp3", u"toB" }));
    EXPECT_EQ(All(u"\\SDMMC\\a\\toB\\*"), (Names{ u".", u".." }));
}

TEST_F(DeviceTreeTest, APipeIsNeitherListedNorOpened)
{
    ASSERT_EQ(mkfifo(CardPath("pipe.mp3").c_str(), 0666), 0);
    ASSERT_EQ(symlink("nowhere", CardPath("dangling.mp3").c_str()), 0);
    EXPECT_EQ(All(u"\\SDMMC\\*"), Names());
    EXPECT_EQ(Contents(u"\\SDMMC\\pipe.mp3"), "(no file)");
    EXPECT_EQ(_wfopen(u"\\SDMMC\\pipe.mp3", u"rb"), nullptr);
}

struct StoredAttribute {
    const char* name;
    std::string_view stored;
    DWORD expected;
};

TEST_F(DeviceTreeTest, TheStoredAttributesAreThoseOfFileServers)
{
    using namespace std::string_view_literals;
    constexpr StoredAttribute kCases[] = {
        { "Archive.mp3", "0x20"sv, FILE_ATTRIBUTE_ARCHIVE },
        { "None.mp3", "0x0"sv, FILE_ATTRIBUTE_NORMAL },
        { "Hidden.mp3", "0x22"sv, FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN },
        { "WithMore.mp3", "0x1\0\3\0\3\0\0\0"sv, FILE_ATTRIBUTE_READONLY },
        { "Garbage.mp3", "zzz"sv, FILE_ATTRIBUTE_ARCHIVE },
        { "Half.mp3", "0x"sv, FILE_ATTRIBUTE_ARCHIVE },
    };
    for (const auto& testCase : kCases) {
        SCOPED_TRACE(testCase.name);
        device.WriteFile(std::string("card/") + testCase.name);
        if (setxattr(CardPath(testCase.name).c_str(), "user.DOSATTRIB", testCase.stored.data(), testCase.stored.size(),
                     0) != 0)
            GTEST_SKIP() << "the temporary folder's file system keeps no extended attributes";
        const std::string_view name = testCase.name;
        EXPECT_EQ(GetFileAttributesW((u"\\SDMMC\\" + WString(name.begin(), name.end())).c_str()), testCase.expected);
    }
}

TEST_F(DeviceTreeTest, WritingMarksAFileForArchiving)
{
    device.WriteFile("card/a.txt", "old");
    if (setxattr(CardPath("a.txt").c_str(), "user.DOSATTRIB", "0x2", 3, 0) != 0)
        GTEST_SKIP() << "the temporary folder's file system keeps no extended attributes";
    EXPECT_TRUE(Write(u"\\SDMMC\\a.txt", OPEN_EXISTING, "new"));
    EXPECT_EQ(GetFileAttributesW(u"\\SDMMC\\a.txt"), FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN);
}

TEST_F(DeviceTreeTest, AHostPathIsFoundForExistingNamesOnly)
{
    device.WriteFile("card/Song.mp3");
    EXPECT_EQ(FindHostPath(u"SDMMC\\SONG.mp3"), CardPath("Song.mp3"));
    EXPECT_EQ(FindHostPath(u"SDMMC\\none.mp3"), std::nullopt);
    EXPECT_EQ(FindHostPath(u"\\SDMMC"), device.CardDirectory());
}

TEST(DevicePaths, AreTakenApart)
{
    const auto path = ParseDevicePath(u"\\Windows\\.\\a\\..\\\\b.gif");
    EXPECT_EQ(path.names, (std::vector<std::u16string>{ u"Windows", u"b.gif" }));
    EXPECT_FALSE(path.endsInSeparator);
    EXPECT_TRUE(ParseDevicePath(u"SDMMC\\").endsInSeparator);
    EXPECT_TRUE(ParseDevicePath(u"\\..\\..").IsRoot());
}

TEST(HostNames, EveryByteSurvivesTheRoundTrip)
{
    std::string all;
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '/')
            all.push_back(static_cast<char>(byte));
    }
    const std::string samples[] = { all,
                                    "\xE6\xAD\x8C\xE6\x9B\xB2", // two Chinese characters
                                    "\xF0\x9F\x8E\xB5",         // beyond the basic plane
                                    "\xED\xA0\x80",             // a surrogate spelt in UTF-8
                                    "\xEF\x81\x9C",             // U+F05C itself
                                    "\xE6\xAD",                 // cut
                                    "\xC0\xAF",
                                    "\xF4\x90\x80\x80\xFF" }; // over-long, too large
    for (const auto& sample : samples)
        EXPECT_EQ(HostNameFromDevice(DeviceNameFromHost(sample)), sample);
}

TEST(HostNames, WhatNoHostNameCanBeIsRefused)
{
    EXPECT_EQ(HostNameFromDevice(std::u16string(1, char16_t(0xD800))), std::nullopt);
    EXPECT_EQ(HostNameFromDevice(std::u16string(1, char16_t(0xDC7F))), std::nullopt);
    EXPECT_EQ(HostNameFromDevice(std::u16string(1, u'\0')), std::nullopt);
    EXPECT_EQ(HostNameFromDevice(u"a/b"), std::nullopt);
}

class Drivers : public DeviceTreeTest {
protected:
    HANDLE Open(const WString& name)
    {
        return CreateFileW(name.c_str(), 1, 3, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    }
};

TEST_F(Drivers, TheCardsDriversOpenWhileThereIsACard)
{
    for (const auto* const name : { u"DSK3:", u"SDH1:", u"sdh1:" }) {
        const HANDLE handle = Open(name);
        EXPECT_NE(handle, INVALID_HANDLE_VALUE);
        EXPECT_TRUE(CloseHandle(handle));
        EXPECT_FALSE(CloseHandle(handle));
    }
    ASSERT_EQ(rmdir(device.CardDirectory().c_str()), 0);
    EXPECT_EQ(Open(u"DSK3:"), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
}

TEST_F(Drivers, OnlyTheCardHostKnowsItsCode)
{
    const HANDLE host = Open(u"SDH1:");
    const HANDLE disk = Open(u"DSK3:");
    DWORD returned = 5;
    EXPECT_TRUE(DeviceIoControl(host, 0x9C402008, nullptr, 0, nullptr, 0, &returned, nullptr));
    EXPECT_EQ(returned, 0U);
    EXPECT_FALSE(DeviceIoControl(host, 0x9C40200C, nullptr, 0, nullptr, 0, nullptr, nullptr));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_FUNCTION);
    EXPECT_FALSE(DeviceIoControl(disk, 0x9C402008, nullptr, 0, nullptr, 0, nullptr, nullptr));
    EXPECT_TRUE(CloseHandle(host));
    EXPECT_TRUE(CloseHandle(disk));
    EXPECT_FALSE(DeviceIoControl(host, 0x9C402008, nullptr, 0, nullptr, 0, nullptr, nullptr));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST_F(Drivers, ThereIsNoTransmitter)
{
    EXPECT_EQ(Open(u"FMT0:"), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
}

} // namespace
} // namespace cardsong::kernel
