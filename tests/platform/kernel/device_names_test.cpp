// Names that the file systems of this world treat in odd ways, on the device's own terms.
#include "tests/platform/kernel/device_fixture.h"

#include <utility>

namespace {

using cardsong::test::Names;

class DeviceNames : public cardsong::test::DeviceTest {
protected:
    // The error of opening a file so.
    DWORD ErrorOf(WStringView name, DWORD disposition)
    {
        const DWORD access = disposition == OPEN_EXISTING ? GENERIC_READ : GENERIC_WRITE;
        const HANDLE file = CreateFileW(device.Path(name).c_str(), access, 3, nullptr, disposition, 0, nullptr);
        const DWORD error = GetLastError();
        if (file == INVALID_HANDLE_VALUE)
            return error;
        CloseHandle(file);
        return ERROR_SUCCESS;
    }
};

// Desktop systems keep these names for devices; the device's own devices have a colon.
TEST_F(DeviceNames, NamesThatElsewhereAreDevicesAreOrdinary)
{
    for (const auto* const name : { TEXT("NUL"), TEXT("con.txt"), TEXT("Aux.mp3"), TEXT("COM1"), TEXT("lpt9.x") }) {
        const WString path = device.Path(name);
        EXPECT_EQ(GetFileAttributesW(path.c_str()), INVALID_FILE_ATTRIBUTES);
        EXPECT_EQ(GetLastError(), DWORD{ ERROR_FILE_NOT_FOUND });
        EXPECT_TRUE(Write(path, CREATE_NEW, "kept"));
        EXPECT_EQ(Contents(path), "kept");
        EXPECT_EQ(All(path), (Names{ name }));
        EXPECT_TRUE(DeleteFileW(path.c_str()));
    }
}

TEST_F(DeviceNames, AFolderMayBearADevicesName)
{
    ASSERT_TRUE(CreateDirectoryW(device.Path(TEXT("Aux")).c_str(), nullptr));
    EXPECT_TRUE(Write(device.Path(TEXT("Aux\\a.txt")), CREATE_NEW, "kept"));
    EXPECT_EQ(Contents(device.Path(TEXT("aux\\A.TXT"))), "kept");
    EXPECT_EQ(All(device.Path(TEXT("aux\\*"))), (Names{ TEXT("."), TEXT(".."), TEXT("a.txt") }));
}

TEST_F(DeviceNames, DotsAndBlanksAtTheEndDoNotCount)
{
    EXPECT_TRUE(Write(device.Path(TEXT("a.txt. . ")), CREATE_NEW, "kept"));
    EXPECT_EQ(device.ReadFile("user/scratch/a.txt"), "kept");
    EXPECT_EQ(Contents(device.Path(TEXT("a.txt."))), "kept");
    EXPECT_EQ(Contents(device.Path(TEXT("A.TXT  "))), "kept");
    EXPECT_EQ(ErrorOf(TEXT("a.txt."), CREATE_NEW), DWORD{ ERROR_FILE_EXISTS });
    EXPECT_EQ(GetFileAttributesW(device.Path(TEXT("a.txt .")).c_str()), DWORD{ FILE_ATTRIBUTE_ARCHIVE });
    EXPECT_EQ(All(device.Path(TEXT("a.txt."))), (Names{ TEXT("a.txt") }));
    EXPECT_TRUE(DeleteFileW(device.Path(TEXT("a.txt.")).c_str()));
    EXPECT_TRUE(CreateDirectoryW(device.Path(TEXT("folder. ")).c_str(), nullptr));
    EXPECT_EQ(All(device.Path(TEXT("f*"))), (Names{ TEXT("folder") }));
}

TEST_F(DeviceNames, AFolderIsFoundWithADotAtItsEnd)
{
    device.WriteFile("user/scratch/folder/a.txt", "kept");
    EXPECT_EQ(Contents(device.Path(TEXT("folder.\\a.txt"))), "kept");
    EXPECT_TRUE(Write(device.Path(TEXT("folder.\\b.txt")), CREATE_NEW, "new"));
    EXPECT_EQ(device.ReadFile("user/scratch/folder/b.txt"), "new");
}

TEST_F(DeviceNames, ANameOfNothingElseIsNone)
{
    for (const auto* const name : { TEXT("..."), TEXT(" "), TEXT(". ."), TEXT(".. ") }) {
        EXPECT_EQ(ErrorOf(name, CREATE_ALWAYS), DWORD{ ERROR_INVALID_NAME });
        EXPECT_EQ(GetFileAttributesW(device.Path(name).c_str()), INVALID_FILE_ATTRIBUTES);
        EXPECT_FALSE(CreateDirectoryW(device.Path(name).c_str(), nullptr));
    }
}

TEST_F(DeviceNames, SomeCharactersAreInNoName)
{
    for (const auto* const name : { TEXT("a*b"), TEXT("a?b"), TEXT("a<b"), TEXT("a>b"), TEXT("a|b"), TEXT("a\"b"),
                                    TEXT("a:b"), TEXT("a\x05"), TEXT("a*b\\c"), TEXT("x:y\\z") }) {
        EXPECT_EQ(ErrorOf(name, OPEN_EXISTING), DWORD{ ERROR_INVALID_NAME });
        EXPECT_EQ(ErrorOf(name, CREATE_ALWAYS), DWORD{ ERROR_INVALID_NAME });
        EXPECT_EQ(GetFileAttributesW(device.Path(name).c_str()), INVALID_FILE_ATTRIBUTES);
        EXPECT_EQ(GetLastError(), DWORD{ ERROR_INVALID_NAME });
        EXPECT_FALSE(DeleteFileW(device.Path(name).c_str()));
        EXPECT_EQ(GetLastError(), DWORD{ ERROR_INVALID_NAME });
        EXPECT_FALSE(CreateDirectoryW(device.Path(name).c_str(), nullptr));
        EXPECT_EQ(GetLastError(), DWORD{ ERROR_INVALID_NAME });
    }
}

TEST_F(DeviceNames, AFileIsNoFolder)
{
    device.WriteFile("user/scratch/a.txt", "kept");
    EXPECT_EQ(ErrorOf(TEXT("a.txt\\"), OPEN_EXISTING), DWORD{ ERROR_INVALID_NAME });
    EXPECT_EQ(ErrorOf(TEXT("a.txt\\"), CREATE_ALWAYS), DWORD{ ERROR_INVALID_NAME });
    EXPECT_EQ(ErrorOf(TEXT("a.txt\\b"), OPEN_EXISTING), DWORD{ ERROR_PATH_NOT_FOUND });
    EXPECT_EQ(ErrorOf(TEXT("a.txt\\b"), CREATE_ALWAYS), DWORD{ ERROR_PATH_NOT_FOUND });
    EXPECT_EQ(GetFileAttributesW(device.Path(TEXT("a.txt\\")).c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_PATH_NOT_FOUND });
    EXPECT_FALSE(DeleteFileW(device.Path(TEXT("a.txt\\")).c_str()));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_INVALID_NAME });
    EXPECT_FALSE(CreateDirectoryW(device.Path(TEXT("a.txt")).c_str(), nullptr));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_ALREADY_EXISTS });
    EXPECT_EQ(device.ReadFile("user/scratch/a.txt"), "kept");
}

TEST_F(DeviceNames, AFolderMayEndInASeparator)
{
    EXPECT_TRUE(CreateDirectoryW(device.Path(TEXT("folder\\")).c_str(), nullptr));
    EXPECT_EQ(GetFileAttributesW(device.Path(TEXT("folder\\")).c_str()), DWORD{ FILE_ATTRIBUTE_DIRECTORY });
    EXPECT_EQ(ErrorOf(TEXT("folder\\"), OPEN_EXISTING), DWORD{ ERROR_ACCESS_DENIED });
    EXPECT_EQ(ErrorOf(TEXT("folder"), CREATE_ALWAYS), DWORD{ ERROR_ACCESS_DENIED });
    EXPECT_EQ(ErrorOf(TEXT("folder"), CREATE_NEW), DWORD{ ERROR_FILE_EXISTS });
    EXPECT_EQ(ErrorOf(TEXT("new\\"), CREATE_ALWAYS), DWORD{ ERROR_INVALID_NAME });
    EXPECT_FALSE(DeleteFileW(device.Path(TEXT("folder\\")).c_str()));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_ACCESS_DENIED });
}

TEST_F(DeviceNames, LongPathsAreOrdinary)
{
    WString path = device.Path(WString(100, TEXT('a')));
    for (int depth = 0; depth < 5; ++depth, path += TEXT("\\") + WString(100, TEXT('b')))
        ASSERT_TRUE(CreateDirectoryW(path.c_str(), nullptr));
    ASSERT_GT(path.size(), std::size_t{ MAX_PATH });
    EXPECT_TRUE(Write(path, CREATE_NEW, "deep"));
    EXPECT_EQ(Contents(path), "deep");
    EXPECT_EQ(All(path), (Names{ WString(100, TEXT('b')) }));
    EXPECT_EQ(All(path.substr(0, path.size() - 100) + TEXT("*.*")),
              (Names{ TEXT("."), TEXT(".."), WString(100, TEXT('b')) }));
    EXPECT_TRUE(DeleteFileW(path.c_str()));
}

TEST_F(DeviceNames, ANameOf255UnitsIsTheLongest)
{
    const WString path = device.Path(WString(255, TEXT('a')));
    EXPECT_TRUE(Write(path, CREATE_NEW, "x"));
    EXPECT_EQ(All(path), (Names{ WString(255, TEXT('a')) }));
    EXPECT_TRUE(DeleteFileW(path.c_str()));
    EXPECT_FALSE(Write(path + TEXT("a"), CREATE_NEW, "x"));
    EXPECT_EQ(GetFileAttributesW((path + TEXT("a")).c_str()), INVALID_FILE_ATTRIBUTES);
}

} // namespace
