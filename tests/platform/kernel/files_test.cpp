#include "platform/ce.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace {

using cardsong::test::ScratchDevice;

constexpr DWORD kBoth = GENERIC_READ | GENERIC_WRITE;

class Files : public ::testing::Test {
protected:
    HANDLE Open(WStringView name, DWORD access, DWORD disposition, DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE)
    {
        return CreateFileW(device.Path(name).c_str(), access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL,
                           nullptr);
    }
    void Make(WStringView name, std::string_view contents)
    {
        const HANDLE file = Open(name, GENERIC_WRITE, CREATE_ALWAYS);
        ASSERT_NE(file, INVALID_HANDLE_VALUE);
        DWORD written = 0;
        ASSERT_TRUE(WriteFile(file, contents.data(), static_cast<DWORD>(contents.size()), &written, nullptr));
        ASSERT_EQ(written, contents.size());
        ASSERT_TRUE(CloseHandle(file));
    }
    std::string Contents(WStringView name)
    {
        const HANDLE file = Open(name, GENERIC_READ, OPEN_EXISTING);
        if (file == INVALID_HANDLE_VALUE)
            return "(no file)";
        char buffer[256] = {};
        DWORD got = 0;
        EXPECT_TRUE(ReadFile(file, buffer, sizeof buffer, &got, nullptr));
        EXPECT_TRUE(CloseHandle(file));
        return std::string(buffer, got);
    }

    ScratchDevice device;
};

TEST_F(Files, WhatIsWrittenIsReadBack)
{
    Make(TEXT("a.txt"), "one two");
    EXPECT_EQ(Contents(TEXT("a.txt")), "one two");
}

TEST_F(Files, NamesAreFoundWithoutCase)
{
    Make(TEXT("Song One.MP3"), "x");
    EXPECT_EQ(Contents(TEXT("song one.mp3")), "x");
}

TEST_F(Files, LettersBeyondAsciiAreFoundWithoutCase)
{
    Make(TEXT("\u00C9t\u00C9 \u041C\u0438\u0440.mp3"), "x");
    EXPECT_EQ(Contents(TEXT("\u00E9t\u00E9 \u043C\u0418\u0440.mp3")), "x");
}

TEST_F(Files, OpeningAMissingFileTellsFileNotFound)
{
    EXPECT_EQ(Open(TEXT("none.txt"), GENERIC_READ, OPEN_EXISTING), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
}

TEST_F(Files, OpeningInAMissingFolderTellsPathNotFound)
{
    EXPECT_EQ(Open(TEXT("none\\a.txt"), GENERIC_READ, OPEN_EXISTING), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
}

TEST_F(Files, CreatingInAMissingFolderTellsPathNotFound)
{
    EXPECT_EQ(Open(TEXT("none\\a.txt"), GENERIC_WRITE, CREATE_ALWAYS), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
}

TEST_F(Files, TheEmptyNameTellsPathNotFound)
{
    EXPECT_EQ(CreateFileW(TEXT(""), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
}

TEST_F(Files, ANameWithAWildcardTellsInvalidName)
{
    EXPECT_EQ(Open(TEXT("a*.txt"), GENERIC_READ, OPEN_EXISTING), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_NAME);
    EXPECT_EQ(Open(TEXT("a?.txt"), GENERIC_WRITE, CREATE_ALWAYS), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_NAME);
}

TEST_F(Files, CreateNewRefusesAnExistingFile)
{
    Make(TEXT("a.txt"), "kept");
    EXPECT_EQ(Open(TEXT("A.TXT"), GENERIC_WRITE, CREATE_NEW), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_FILE_EXISTS);
    EXPECT_EQ(Contents(TEXT("a.txt")), "kept");
}

TEST_F(Files, CreateAlwaysEmptiesAnExistingFileAndTellsSo)
{
    Make(TEXT("a.txt"), "old contents");
    const HANDLE file = Open(TEXT("a.txt"), GENERIC_WRITE, CREATE_ALWAYS);
    EXPECT_EQ(GetLastError(), ERROR_ALREADY_EXISTS);
    EXPECT_TRUE(CloseHandle(file));
    EXPECT_EQ(Contents(TEXT("a.txt")), "");
}

TEST_F(Files, CreateAlwaysOfANewFileTellsNoError)
{
    SetLastError(ERROR_ACCESS_DENIED);
    const HANDLE file = Open(TEXT("a.txt"), GENERIC_WRITE, CREATE_ALWAYS);
    EXPECT_EQ(GetLastError(), ERROR_SUCCESS);
    EXPECT_TRUE(CloseHandle(file));
}

TEST_F(Files, OpenAlwaysKeepsTheContents)
{
    Make(TEXT("a.txt"), "kept");
    const HANDLE file = Open(TEXT("a.txt"), kBoth, OPEN_ALWAYS);
    EXPECT_EQ(GetLastError(), ERROR_ALREADY_EXISTS);
    EXPECT_TRUE(CloseHandle(file));
    EXPECT_EQ(Contents(TEXT("a.txt")), "kept");
}

TEST_F(Files, TruncateExistingWithoutWriteAccessIsRefused)
{
    Make(TEXT("a.txt"), "kept");
    EXPECT_EQ(Open(TEXT("a.txt"), GENERIC_READ, TRUNCATE_EXISTING), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST_F(Files, AFolderCannotBeOpenedAsAFile)
{
    ASSERT_TRUE(CreateDirectoryW(device.Path(TEXT("folder")).c_str(), nullptr));
    EXPECT_EQ(Open(TEXT("folder"), GENERIC_READ, OPEN_EXISTING), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
}

TEST_F(Files, ReadingAtTheEndSucceedsWithNoBytes)
{
    Make(TEXT("a.txt"), "ab");
    const HANDLE file = Open(TEXT("a.txt"), GENERIC_READ, OPEN_EXISTING);
    char buffer[4];
    DWORD got = 9;
    EXPECT_TRUE(ReadFile(file, buffer, 4, &got, nullptr));
    EXPECT_EQ(got, 2U);
    EXPECT_TRUE(ReadFile(file, buffer, 4, &got, nullptr));
    EXPECT_EQ(got, 0U);
    EXPECT_TRUE(CloseHandle(file));
}

TEST_F(Files, WritingThroughAReadHandleIsDenied)
{
    Make(TEXT("a.txt"), "ab");
    const HANDLE file = Open(TEXT("a.txt"), GENERIC_READ, OPEN_EXISTING);
    DWORD written = 9;
    EXPECT_FALSE(WriteFile(file, "x", 1, &written, nullptr));
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    EXPECT_EQ(written, 0U);
    EXPECT_TRUE(CloseHandle(file));
}

TEST_F(Files, PositionsCountFromStartCurrentAndEnd)
{
    Make(TEXT("a.txt"), "0123456789");
    const HANDLE file = Open(TEXT("a.txt"), GENERIC_READ, OPEN_EXISTING);
    EXPECT_EQ(SetFilePointer(file, 4, nullptr, FILE_BEGIN), 4U);
    EXPECT_EQ(SetFilePointer(file, -1, nullptr, FILE_CURRENT), 3U);
    EXPECT_EQ(SetFilePointer(file, -2, nullptr, FILE_END), 8U);
    char rest[4] = {};
    DWORD got = 0;
    EXPECT_TRUE(ReadFile(file, rest, 4, &got, nullptr));
    EXPECT_EQ(std::string(rest, got), "89");
    EXPECT_TRUE(CloseHandle(file));
}

TEST_F(Files, APositionBeforeTheStartIsRefusedAndKept)
{
    Make(TEXT("a.txt"), "0123");
    const HANDLE file = Open(TEXT("a.txt"), GENERIC_READ, OPEN_EXISTING);
    EXPECT_EQ(SetFilePointer(file, 2, nullptr, FILE_BEGIN), 2U);
    EXPECT_EQ(SetFilePointer(file, -3, nullptr, FILE_CURRENT), INVALID_SET_FILE_POINTER);
    EXPECT_NE(GetLastError(), ERROR_SUCCESS);
    EXPECT_EQ(SetFilePointer(file, 0, nullptr, FILE_CURRENT), 2U);
    EXPECT_TRUE(CloseHandle(file));
}

TEST_F(Files, APositionPastFourGigabytesComesInTwoHalves)
{
    Make(TEXT("a.txt"), "x");
    const HANDLE file = Open(TEXT("a.txt"), GENERIC_READ, OPEN_EXISTING);
    LONG high = 1;
    EXPECT_EQ(SetFilePointer(file, 5, &high, FILE_BEGIN), 5U);
    EXPECT_EQ(high, 1);
    EXPECT_TRUE(CloseHandle(file));
}

TEST_F(Files, GetFileSizeTellsTheSize)
{
    Make(TEXT("a.txt"), "12345");
    const HANDLE file = Open(TEXT("a.txt"), GENERIC_READ, OPEN_EXISTING);
    DWORD high = 7;
    EXPECT_EQ(GetFileSize(file, &high), 5U);
    EXPECT_EQ(high, 0U);
    EXPECT_TRUE(CloseHandle(file));
}

TEST_F(Files, AHandleClosesOnce)
{
    Make(TEXT("a.txt"), "x");
    const HANDLE file = Open(TEXT("a.txt"), GENERIC_READ, OPEN_EXISTING);
    EXPECT_TRUE(CloseHandle(file));
    EXPECT_FALSE(CloseHandle(file));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    DWORD got = 0;
    char byte = 0;
    EXPECT_FALSE(ReadFile(file, &byte, 1, &got, nullptr));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST_F(Files, ASecondOpeningIsRefusedWhenTheFirstSharesNothing)
{
    Make(TEXT("a.txt"), "x");
    const HANDLE first = Open(TEXT("a.txt"), GENERIC_READ, OPEN_EXISTING, 0);
    EXPECT_EQ(Open(TEXT("a.txt"), GENERIC_READ, OPEN_EXISTING), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_SHARING_VIOLATION);
    EXPECT_TRUE(CloseHandle(first));
    const HANDLE second = Open(TEXT("a.txt"), GENERIC_READ, OPEN_EXISTING);
    EXPECT_NE(second, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(CloseHandle(second));
}

TEST_F(Files, AWriterIsRefusedWhileAReaderSharesOnlyReading)
{
    Make(TEXT("a.txt"), "kept");
    const HANDLE reader = Open(TEXT("a.txt"), GENERIC_READ, OPEN_EXISTING, FILE_SHARE_READ);
    EXPECT_EQ(Open(TEXT("a.txt"), GENERIC_WRITE, CREATE_ALWAYS), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_SHARING_VIOLATION);
    EXPECT_TRUE(CloseHandle(reader));
    EXPECT_EQ(Contents(TEXT("a.txt")), "kept");
}

TEST_F(Files, AnOpenFileIsNotDeleted)
{
    Make(TEXT("a.txt"), "x");
    const HANDLE file = Open(TEXT("a.txt"), GENERIC_READ, OPEN_EXISTING);
    EXPECT_FALSE(DeleteFileW(device.Path(TEXT("a.txt")).c_str()));
    EXPECT_EQ(GetLastError(), ERROR_SHARING_VIOLATION);
    EXPECT_TRUE(CloseHandle(file));
    EXPECT_TRUE(DeleteFileW(device.Path(TEXT("a.txt")).c_str()));
}

TEST_F(Files, DeletingAMissingFileTellsFileNotFound)
{
    EXPECT_FALSE(DeleteFileW(device.Path(TEXT("none.txt")).c_str()));
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
}

TEST_F(Files, DeletingAFolderIsDenied)
{
    ASSERT_TRUE(CreateDirectoryW(device.Path(TEXT("folder")).c_str(), nullptr));
    EXPECT_FALSE(DeleteFileW(device.Path(TEXT("folder")).c_str()));
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
}

TEST_F(Files, AFolderIsMadeOnce)
{
    EXPECT_TRUE(CreateDirectoryW(device.Path(TEXT("folder")).c_str(), nullptr));
    EXPECT_FALSE(CreateDirectoryW(device.Path(TEXT("FOLDER")).c_str(), nullptr));
    EXPECT_EQ(GetLastError(), ERROR_ALREADY_EXISTS);
}

TEST_F(Files, AFolderIsNotMadeInAMissingOne)
{
    EXPECT_FALSE(CreateDirectoryW(device.Path(TEXT("a\\b")).c_str(), nullptr));
    EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
}

TEST_F(Files, AnOrdinaryFileIsDueForArchiving)
{
    Make(TEXT("a.txt"), "x");
    EXPECT_EQ(GetFileAttributesW(device.Path(TEXT("a.txt")).c_str()) & FILE_ATTRIBUTE_ARCHIVE, FILE_ATTRIBUTE_ARCHIVE);
}

TEST_F(Files, AFolderHasTheDirectoryAttribute)
{
    ASSERT_TRUE(CreateDirectoryW(device.Path(TEXT("folder")).c_str(), nullptr));
    const DWORD attributes = GetFileAttributesW(device.Path(TEXT("folder")).c_str());
    EXPECT_EQ(attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_ARCHIVE), FILE_ATTRIBUTE_DIRECTORY);
}

TEST_F(Files, AHiddenFileIsHiddenAndDueForArchiving)
{
    const auto path = device.Path(TEXT("h.txt"));
    CloseHandle(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_HIDDEN, nullptr));
    constexpr DWORD kMask = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
    EXPECT_EQ(GetFileAttributesW(path.c_str()) & kMask, FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE);
}

TEST_F(Files, AReadOnlyFileIsNeitherWrittenNorDeleted)
{
    const auto path = device.Path(TEXT("r.txt"));
    CloseHandle(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_READONLY, nullptr));
    EXPECT_EQ(Open(TEXT("r.txt"), GENERIC_WRITE, OPEN_EXISTING), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    EXPECT_FALSE(DeleteFileW(path.c_str()));
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
}

TEST_F(Files, AttributesOfAMissingNameTellWhatIsMissing)
{
    EXPECT_EQ(GetFileAttributesW(device.Path(TEXT("none")).c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(GetFileAttributesW(device.Path(TEXT("none\\none")).c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
}

TEST_F(Files, ExtendedAttributesHoldSizeAndTime)
{
    Make(TEXT("a.txt"), "123");
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    ASSERT_TRUE(GetFileAttributesExW(device.Path(TEXT("a.txt")).c_str(), GetFileExInfoStandard, &data));
    EXPECT_EQ(data.nFileSizeLow, 3U);
    EXPECT_EQ(data.nFileSizeHigh, 0U);
    constexpr DWORD kHighOf2020 = 0x01D5C02B; // 2020-01-01 in 100 ns since 1601, upper half
    EXPECT_GT(data.ftLastWriteTime.dwHighDateTime, kHighOf2020);
}

TEST_F(Files, TheRuntimeOpensFilesByMode)
{
    std::FILE* file = _wfopen(device.Path(TEXT("r.bin")).c_str(), TEXT("wb"));
    ASSERT_NE(file, nullptr);
    std::fwrite("abc", 1, 3, file);
    std::fclose(file);
    file = _wfopen(device.Path(TEXT("R.BIN")).c_str(), TEXT("ab"));
    ASSERT_NE(file, nullptr);
    std::fwrite("d", 1, 1, file);
    std::fclose(file);
    EXPECT_EQ(Contents(TEXT("r.bin")), "abcd");
    file = _wfopen(device.Path(TEXT("r.bin")).c_str(), TEXT("wb"));
    ASSERT_NE(file, nullptr);
    std::fwrite("e", 1, 1, file);
    std::fclose(file);
    EXPECT_EQ(Contents(TEXT("r.bin")), "e");
}

TEST_F(Files, TheRuntimeOpensNoMissingFileForReading)
{
    EXPECT_EQ(_wfopen(device.Path(TEXT("none.bin")).c_str(), TEXT("rb")), nullptr);
}

TEST_F(Files, TheRuntimeTellsWhyAFileDoesNotOpen)
{
    errno = 0;
    EXPECT_EQ(_wfopen(device.Path(TEXT("none.bin")).c_str(), TEXT("rb")), nullptr);
    EXPECT_EQ(errno, ENOENT);
    const auto readOnly = device.Path(TEXT("kept.bin"));
    CloseHandle(CreateFileW(readOnly.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_READONLY, nullptr));
    errno = 0;
    EXPECT_EQ(_wfopen(readOnly.c_str(), TEXT("wb")), nullptr);
    EXPECT_EQ(errno, EACCES);
}

TEST_F(Files, DeletingNoNameTellsPathNotFound)
{
    SetLastError(ERROR_SUCCESS);
    EXPECT_FALSE(DeleteFileW(TEXT("")));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_PATH_NOT_FOUND });
}

TEST_F(Files, AClosedHandleHasNoPosition)
{
    Make(TEXT("a.txt"), "abc");
    const HANDLE file = Open(TEXT("a.txt"), GENERIC_READ, OPEN_EXISTING);
    CloseHandle(file);
    EXPECT_EQ(SetFilePointer(file, 0, nullptr, FILE_BEGIN), INVALID_SET_FILE_POINTER);
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_INVALID_HANDLE });
}

TEST_F(Files, AnUnknownDispositionIsRefused)
{
    Make(TEXT("a.txt"), "kept");
    for (const DWORD disposition : { 0U, 6U }) {
        EXPECT_EQ(Open(TEXT("a.txt"), GENERIC_READ, disposition), INVALID_HANDLE_VALUE);
        EXPECT_EQ(GetLastError(), DWORD{ ERROR_INVALID_PARAMETER });
    }
    EXPECT_EQ(CreateFileW(nullptr, GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_PATH_NOT_FOUND });
}

TEST_F(Files, AReadOnlyFileIsRead)
{
    const auto path = device.Path(TEXT("r.txt"));
    CloseHandle(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_READONLY, nullptr));
    EXPECT_EQ(Contents(TEXT("r.txt")), "");
    EXPECT_EQ(Open(TEXT("r.txt"), GENERIC_WRITE, CREATE_ALWAYS), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_ACCESS_DENIED });
    EXPECT_EQ(_wfopen(path.c_str(), TEXT("ab")), nullptr);
}

TEST_F(Files, AHandleThatOnlyAsksReadsNothing)
{
    Make(TEXT("a.txt"), "12345");
    const HANDLE file = Open(TEXT("a.txt"), 0, OPEN_EXISTING);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    char byte = 0;
    DWORD got = 9;
    EXPECT_FALSE(ReadFile(file, &byte, 1, &got, nullptr));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_ACCESS_DENIED });
    EXPECT_EQ(GetFileSize(file, nullptr), 5U);
    EXPECT_EQ(SetFilePointer(file, 3, nullptr, FILE_BEGIN), 3U);
    EXPECT_TRUE(CloseHandle(file));
}

TEST_F(Files, AnUnknownMethodOfMovingIsRefused)
{
    Make(TEXT("a.txt"), "12345");
    const HANDLE file = Open(TEXT("a.txt"), GENERIC_READ, OPEN_EXISTING);
    EXPECT_EQ(SetFilePointer(file, 0, nullptr, 9), DWORD{ INVALID_SET_FILE_POINTER });
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_INVALID_PARAMETER });
    LONG high = -1;
    EXPECT_EQ(SetFilePointer(file, -5, &high, FILE_BEGIN), DWORD{ INVALID_SET_FILE_POINTER });
    EXPECT_EQ(GetLastError(), 131U); // before the start
    EXPECT_TRUE(CloseHandle(file));
    EXPECT_EQ(GetFileSize(file, nullptr), DWORD{ INVALID_FILE_SIZE });
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_INVALID_HANDLE });
    EXPECT_FALSE(FlushFileBuffers(file));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_INVALID_HANDLE });
}

TEST_F(Files, OtherLevelsOfAttributesAreRefused)
{
    Make(TEXT("a.txt"), "x");
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    constexpr auto kUnknown = static_cast<GET_FILEEX_INFO_LEVELS>(1);
    EXPECT_FALSE(GetFileAttributesExW(device.Path(TEXT("a.txt")).c_str(), kUnknown, &data));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_INVALID_PARAMETER });
}

} // namespace
