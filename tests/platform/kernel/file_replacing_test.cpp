#include "platform/ce.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::ScratchDevice;

class DeleteAndRename : public ::testing::Test {
protected:
    bool Replace(WStringView target, WStringView source)
    {
        return DeleteAndRenameFile(m_device.Path(target).c_str(), m_device.Path(source).c_str()) != FALSE;
    }
    ScratchDevice m_device;
};

TEST_F(DeleteAndRename, PutsOneFileInThePlaceOfTheOther)
{
    m_device.WriteFile("user/scratch/list", "old and longer");
    m_device.WriteFile("user/scratch/list.new", "new");
    EXPECT_TRUE(Replace(TEXT("list"), TEXT("list.new")));
    EXPECT_EQ(m_device.ReadFile("user/scratch/list"), "new");
    EXPECT_EQ(GetFileAttributesW(m_device.Path(TEXT("list.new")).c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(DeleteAndRename, NeedsNoOldFile)
{
    m_device.WriteFile("user/scratch/list.new", "new");
    EXPECT_TRUE(Replace(TEXT("list"), TEXT("list.new")));
    EXPECT_EQ(m_device.ReadFile("user/scratch/list"), "new");
}

TEST_F(DeleteAndRename, WithoutANewFileKeepsTheOldOne)
{
    m_device.WriteFile("user/scratch/list", "old");
    EXPECT_FALSE(Replace(TEXT("list"), TEXT("list.new")));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_FILE_NOT_FOUND });
    EXPECT_EQ(m_device.ReadFile("user/scratch/list"), "old");
}

TEST_F(DeleteAndRename, AFolderIsNeverReplacedNorPutInAPlace)
{
    m_device.MakeFolder("user/scratch/folder");
    m_device.WriteFile("user/scratch/file", "old");
    EXPECT_FALSE(Replace(TEXT("folder"), TEXT("file")));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_ACCESS_DENIED });
    EXPECT_FALSE(Replace(TEXT("file"), TEXT("folder")));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_ACCESS_DENIED });
    EXPECT_EQ(m_device.ReadFile("user/scratch/file"), "old");
}

TEST_F(DeleteAndRename, AnInstalledFileIsCoveredAndStaysAsItWas)
{
    m_device.WriteFile("system/Windows/list", "installed");
    m_device.WriteFile("user/Windows/list.new", "new");
    EXPECT_TRUE(DeleteAndRenameFile(TEXT("\\Windows\\list"), TEXT("\\Windows\\list.new")));
    EXPECT_EQ(m_device.ReadFile("user/Windows/list"), "new");
    EXPECT_EQ(m_device.ReadFile("system/Windows/list"), "installed");
}

TEST_F(DeleteAndRename, AReadOnlyFileIsNotReplaced)
{
    const WString target = m_device.Path(TEXT("list"));
    CloseHandle(CreateFileW(target.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_READONLY, nullptr));
    m_device.WriteFile("user/scratch/list.new", "new");
    EXPECT_FALSE(Replace(TEXT("list"), TEXT("list.new")));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_ACCESS_DENIED });
    EXPECT_EQ(m_device.ReadFile("user/scratch/list.new"), "new");
}

TEST_F(DeleteAndRename, AnOpenFileIsNeitherReplacedNorPutInAPlace)
{
    m_device.WriteFile("user/scratch/list", "old");
    m_device.WriteFile("user/scratch/list.new", "new");
    for (const auto* const open : { TEXT("list"), TEXT("list.new") }) {
        const HANDLE file = CreateFileW(m_device.Path(open).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        nullptr, OPEN_EXISTING, 0, nullptr);
        EXPECT_FALSE(Replace(TEXT("list"), TEXT("list.new")));
        const bool isTarget = WString(open) == TEXT("list");
        EXPECT_EQ(GetLastError(), isTarget ? DWORD{ ERROR_ACCESS_DENIED } : DWORD{ ERROR_SHARING_VIOLATION });
        EXPECT_TRUE(CloseHandle(file));
    }
    EXPECT_EQ(m_device.ReadFile("user/scratch/list"), "old");
    EXPECT_TRUE(Replace(TEXT("list"), TEXT("list.new")));
}

TEST_F(DeleteAndRename, AnInstalledFileIsNotPutInAPlace)
{
    m_device.WriteFile("system/Windows/list.new", "installed");
    EXPECT_FALSE(DeleteAndRenameFile(TEXT("\\Windows\\list"), TEXT("\\Windows\\list.new")));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_ACCESS_DENIED });
}

TEST_F(DeleteAndRename, TakesNoNamesThatNoFileHas)
{
    m_device.WriteFile("user/scratch/list.new", "new");
    EXPECT_FALSE(Replace(TEXT("a*b"), TEXT("list.new")));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_INVALID_NAME });
    EXPECT_FALSE(Replace(TEXT("none\\list"), TEXT("list.new")));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_PATH_NOT_FOUND });
    EXPECT_FALSE(Replace(TEXT("list"), TEXT("list.new\\")));
    EXPECT_FALSE(Replace(TEXT("list\\"), TEXT("list.new")));
    EXPECT_TRUE(Replace(TEXT("list.new"), TEXT("list.new")));
    EXPECT_EQ(m_device.ReadFile("user/scratch/list.new"), "new");
}

TEST_F(DeleteAndRename, TakesNoMissingNames)
{
    EXPECT_FALSE(DeleteAndRenameFile(nullptr, m_device.Path(TEXT("a")).c_str()));
    EXPECT_FALSE(DeleteAndRenameFile(m_device.Path(TEXT("a")).c_str(), nullptr));
}

TEST(FlushFile, NeedsWriteAccess)
{
    const ScratchDevice device;
    device.WriteFile("user/scratch/a", "x");
    const WString path = device.Path(TEXT("a"));
    const HANDLE written =
        CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_TRUE(FlushFileBuffers(written));
    CloseHandle(written);
    const HANDLE read = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_FALSE(FlushFileBuffers(read));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_ACCESS_DENIED });
    CloseHandle(read);
}

TEST(FolderIdentity, IsOfTheFolderWhateverItsSpelling)
{
    const ScratchDevice device;
    device.MakeFolder("card/Music");
    device.MakeFolder("card/Other");
    FolderIdentity one{};
    FolderIdentity same{};
    FolderIdentity other{};
    EXPECT_TRUE(GetFolderIdentity(TEXT("\\SDMMC\\Music"), &one));
    EXPECT_TRUE(GetFolderIdentity(TEXT("SDMMC\\MUSIC\\"), &same));
    EXPECT_TRUE(GetFolderIdentity(TEXT("\\SDMMC\\Other"), &other));
    EXPECT_EQ(one, same);
    EXPECT_NE(one, other);
}

TEST(FolderIdentity, IsNoneForAFileAndForNothing)
{
    const ScratchDevice device;
    device.WriteFile("card/song.mp3", "x");
    FolderIdentity identity{};
    EXPECT_FALSE(GetFolderIdentity(TEXT("\\SDMMC\\song.mp3"), &identity));
    EXPECT_FALSE(GetFolderIdentity(TEXT("\\SDMMC\\none"), &identity));
    EXPECT_FALSE(GetFolderIdentity(nullptr, &identity));
}

} // namespace
