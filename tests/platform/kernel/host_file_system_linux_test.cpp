#include "platform/device_tree.h"
#include "platform/linux/kernel/host_files.h"
#include "platform/linux/kernel/host_names.h"
#include "tests/platform/kernel/device_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

namespace cardsong::kernel {
namespace {

using test::Names;

// What only this machine's file system can hold: names of any bytes, links, pipes, stored attributes.
class HostFileSystem : public test::DeviceTest {
protected:
    std::string CardPath(const std::string& name) const { return device.CardDirectory() + "/" + name; }
};

TEST_F(HostFileSystem, NamesThatAreNotUtf8AreListedAndOpened)
{
    const std::string gb2312 = "\xB8\xE8\xC7\xFA.mp3";
    device.WriteFile("card/" + gb2312, "song");
    const auto names = All(u"\\SDMMC\\*.mp3");
    ASSERT_EQ(names.size(), 1U);
    EXPECT_EQ(names[0], u"\xDCB8\xDCE8\xDCC7\xDCFA.mp3");
    EXPECT_EQ(Contents(u"\\SDMMC\\" + names[0]), "song");
}

TEST_F(HostFileSystem, ANameWithABackslashIsListedAndOpened)
{
    device.WriteFile("card/AC\\DC.mp3", "song");
    const auto names = All(u"\\SDMMC\\*");
    ASSERT_EQ(names.size(), 1U);
    EXPECT_EQ(names[0], u"AC\uF05CDC.mp3");
    EXPECT_EQ(Contents(u"\\SDMMC\\" + names[0]), "song");
}

TEST_F(HostFileSystem, OfTwoSpellingsTheExactOneIsOpened)
{
    device.WriteFile("card/a.mp3", "lower");
    device.WriteFile("card/A.mp3", "upper");
    EXPECT_EQ(Contents(u"\\SDMMC\\a.mp3"), "lower");
    EXPECT_EQ(Contents(u"\\SDMMC\\A.mp3"), "upper");
    EXPECT_EQ(Contents(u"\\SDMMC\\A.MP3"), "upper");
}

TEST_F(HostFileSystem, AnUnchangedFolderIsReadOnceAndStillAnswersRight)
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

TEST_F(HostFileSystem, LinksAreFollowed)
{
    device.WriteFile("elsewhere/song.mp3", "song");
    ASSERT_EQ(symlink("../elsewhere", CardPath("link").c_str()), 0);
    EXPECT_EQ(Contents(u"\\SDMMC\\link\\song.mp3"), "song");
    EXPECT_EQ(All(u"\\SDMMC\\*"), (Names{ u"link" }));
}

TEST_F(HostFileSystem, ALinkThatLeadsBackIsListedLikeEveryFolder)
{
    device.WriteFile("card/a/song.mp3");
    device.MakeFolder("card/b");
    ASSERT_EQ(symlink(".", CardPath("self").c_str()), 0);
    ASSERT_EQ(symlink("../b", CardPath("a/toB").c_str()), 0);
    ASSERT_EQ(symlink("../a", CardPath("b/toA").c_str()), 0);
    EXPECT_EQ(All(u"\\SDMMC\\*"), (Names{ u"a", u"b", u"self" }));
    EXPECT_EQ(All(u"\\SDMMC\\a\\*"), (Names{ u".", u"..", u"song.mp3", u"toB" }));
    EXPECT_EQ(All(u"\\SDMMC\\a\\toB\\*"), (Names{ u".", u"..", u"toA" }));
}

TEST_F(HostFileSystem, NothingIsWrittenThroughALinkThatLeadsOffTheCard)
{
    device.WriteFile("elsewhere/song.mp3", "song");
    ASSERT_EQ(symlink("../elsewhere", CardPath("link").c_str()), 0);
    ASSERT_EQ(symlink("../elsewhere/song.mp3", CardPath("song.mp3").c_str()), 0);
    device.WriteFile("card/new.mp3", "new");
    for (const auto* const path : { u"\\SDMMC\\link\\song.mp3", u"\\SDMMC\\link\\made.mp3", u"\\SDMMC\\song.mp3" }) {
        EXPECT_FALSE(Write(path, CREATE_ALWAYS, "spoilt"));
        EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    }
    EXPECT_FALSE(CreateDirectoryW(u"\\SDMMC\\link\\made", nullptr));
    EXPECT_FALSE(DeleteFileW(u"\\SDMMC\\link\\song.mp3"));
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    EXPECT_FALSE(DeleteAndRenameFile(u"\\SDMMC\\link\\song.mp3", u"\\SDMMC\\new.mp3"));
    EXPECT_FALSE(DeleteAndRenameFile(u"\\SDMMC\\link\\made.mp3", u"\\SDMMC\\new.mp3"));
    EXPECT_FALSE(DeleteAndRenameFile(u"\\SDMMC\\taken.mp3", u"\\SDMMC\\link\\song.mp3"));
    EXPECT_EQ(device.ReadFile("elsewhere/song.mp3"), "song");
    EXPECT_FALSE(std::filesystem::exists(device.UserDirectory() + "/../elsewhere/made.mp3"));
    EXPECT_FALSE(std::filesystem::exists(device.UserDirectory() + "/../elsewhere/made"));
}

TEST_F(HostFileSystem, ALinkWithinTheCardIsWrittenThrough)
{
    device.MakeFolder("card/Music");
    ASSERT_EQ(symlink("Music", CardPath("link").c_str()), 0);
    EXPECT_TRUE(Write(u"\\SDMMC\\link\\note.txt", CREATE_ALWAYS, "note"));
    EXPECT_EQ(device.ReadFile("card/Music/note.txt"), "note");
}

// The card's folder itself may be a link, and so may the folders of the user's own tree.
TEST_F(HostFileSystem, LinksOfTheUserAreWrittenThrough)
{
    device.MakeFolder("elsewhere");
    ASSERT_EQ(rmdir(device.CardDirectory().c_str()), 0);
    ASSERT_EQ(symlink("elsewhere", device.CardDirectory().c_str()), 0);
    EXPECT_TRUE(Write(u"\\SDMMC\\note.txt", CREATE_ALWAYS, "note"));
    EXPECT_EQ(device.ReadFile("elsewhere/note.txt"), "note");
    ASSERT_EQ(symlink("../elsewhere", (device.UserDirectory() + "/Windows").c_str()), 0);
    EXPECT_TRUE(Write(u"\\Windows\\list.txt", CREATE_ALWAYS, "list"));
    EXPECT_EQ(device.ReadFile("elsewhere/list.txt"), "list");
}

TEST_F(HostFileSystem, APipeIsNeitherListedNorOpened)
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

TEST_F(HostFileSystem, TheStoredAttributesAreThoseOfFileServers)
{
    using namespace std::string_view_literals;
    constexpr StoredAttribute kCases[] = {
        { "Archive.mp3", "0x20"sv, FILE_ATTRIBUTE_ARCHIVE },
        { "None.mp3", "0x0"sv, FILE_ATTRIBUTE_NORMAL },
        { "Hidden.mp3", "0x22"sv, FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN },
        { "WithMore.mp3", "0x1\0\3\0\3\0\0\0"sv, FILE_ATTRIBUTE_READONLY },
        { "Garbage.mp3", "zzz"sv, FILE_ATTRIBUTE_ARCHIVE },
        { "Half.mp3", "0x"sv, FILE_ATTRIBUTE_ARCHIVE },
        { "NoZero.mp3", "1x2"sv, FILE_ATTRIBUTE_ARCHIVE },
        { "NoX.mp3", "0y2"sv, FILE_ATTRIBUTE_ARCHIVE },
        { "Capital.mp3", "0X21"sv, FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_READONLY },
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

TEST_F(HostFileSystem, AFolderHasItsStoredAttributesButIsNeverMarkedForArchiving)
{
    device.MakeFolder("card/Songs");
    if (setxattr(CardPath("Songs").c_str(), "user.DOSATTRIB", "0x22", 4, 0) != 0)
        GTEST_SKIP() << "the temporary folder's file system keeps no extended attributes";
    EXPECT_EQ(GetFileAttributesW(u"\\SDMMC\\Songs"), FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN);
}

TEST_F(HostFileSystem, WritingMarksAFileForArchiving)
{
    device.WriteFile("card/a.txt", "old");
    if (setxattr(CardPath("a.txt").c_str(), "user.DOSATTRIB", "0x2", 3, 0) != 0)
        GTEST_SKIP() << "the temporary folder's file system keeps no extended attributes";
    EXPECT_TRUE(Write(u"\\SDMMC\\a.txt", OPEN_EXISTING, "new"));
    EXPECT_EQ(GetFileAttributesW(u"\\SDMMC\\a.txt"), FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN);
}

// How much the program may do with its own files and folders is the user's to say.
TEST_F(HostFileSystem, WhatIsMadeHasThePermissionsThatTheUserAllows)
{
    const mode_t before = umask(027);
    ASSERT_TRUE(CreateDirectoryW(u"\\Made", nullptr));
    ASSERT_TRUE(Write(u"\\Windows\\made.txt", CREATE_ALWAYS, "text"));
    umask(before);
    const auto permissions = [this](const std::string& name) {
        struct stat facts = {};
        EXPECT_EQ(stat((device.UserDirectory() + "/" + name).c_str(), &facts), 0) << name;
        return facts.st_mode & 0777;
    };
    EXPECT_EQ(permissions("Made"), 0750U);
    EXPECT_EQ(permissions("Windows"), 0750U);
    EXPECT_EQ(permissions("Windows/made.txt"), 0640U);
}

std::vector<int> OpenDescriptors()
{
    std::vector<int> descriptors;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd"))
        descriptors.push_back(std::stoi(entry.path().filename()));
    std::erase_if(descriptors, [](int descriptor) { return fcntl(descriptor, F_GETFD) == -1; }); // the listing's own
    std::ranges::sort(descriptors);
    return descriptors;
}

TEST_F(HostFileSystem, ChangingAnInstalledFileLeavesNothingOpen)
{
    device.WriteFile("system/Windows/a.txt", "installed");
    ASSERT_TRUE(Write(u"\\Windows\\first.txt", CREATE_ALWAYS, "made before the count"));
    const auto before = OpenDescriptors();
    ASSERT_TRUE(Write(u"\\Windows\\a.txt", OPEN_EXISTING, "INS"));
    EXPECT_EQ(OpenDescriptors(), before);
    EXPECT_EQ(device.ReadFile("user/Windows/a.txt"), "INStalled");
}

TEST_F(HostFileSystem, OpenFilesAreNotHandedToOtherPrograms)
{
    device.WriteFile("system/Windows/a.txt", "installed");
    const auto before = OpenDescriptors();
    const HANDLE read = CreateFileW(u"\\Windows\\a.txt", GENERIC_READ, 3, nullptr, OPEN_EXISTING, 0, nullptr);
    const HANDLE made = CreateFileW(u"\\Windows\\b.txt", GENERIC_WRITE, 3, nullptr, CREATE_NEW, 0, nullptr);
    std::vector<int> opened;
    std::ranges::set_difference(OpenDescriptors(), before, std::back_inserter(opened));
    EXPECT_EQ(opened.size(), 2U);
    for (const int descriptor : opened)
        EXPECT_EQ(fcntl(descriptor, F_GETFD), FD_CLOEXEC) << descriptor;
    CloseHandle(read);
    CloseHandle(made);
}

TEST_F(HostFileSystem, ACardWithoutAFolderIsNotFound)
{
    ASSERT_EQ(rmdir(device.CardDirectory().c_str()), 0);
    EXPECT_EQ(GetFileAttributesW(u"\\SDMMC"), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
}

TEST(HostErrors, EachIsToldInTheApisWords)
{
    const std::pair<int, DWORD> errors[] = {
        { ENOENT, ERROR_FILE_NOT_FOUND },     { ENOTDIR, ERROR_PATH_NOT_FOUND },   { ELOOP, ERROR_PATH_NOT_FOUND },
        { EEXIST, ERROR_FILE_EXISTS },        { ENOSPC, ERROR_DISK_FULL },         { EDQUOT, ERROR_DISK_FULL },
        { ENAMETOOLONG, ERROR_INVALID_NAME }, { EILSEQ, ERROR_INVALID_NAME },      { EMFILE, ERROR_NOT_ENOUGH_MEMORY },
        { ENFILE, ERROR_NOT_ENOUGH_MEMORY },  { ENOMEM, ERROR_NOT_ENOUGH_MEMORY }, { EINVAL, ERROR_INVALID_PARAMETER },
        { EACCES, ERROR_ACCESS_DENIED },      { EROFS, ERROR_ACCESS_DENIED },
    };
    for (const auto& [hostError, error] : errors)
        EXPECT_EQ(ErrorFromHost(hostError), error) << hostError;
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

} // namespace
} // namespace cardsong::kernel
