#include "platform/ce.h"
#include "tests/platform/scratch_device.h"
#include "tests/platform/wine.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using cardsong::test::IsWine;
using cardsong::test::ScratchDevice;
using Names = std::vector<WString>;

class Find : public ::testing::Test {
protected:
    void Make(const std::string& name) { device.WriteFile("user/scratch/" + name, "12345"); }

    Names All(WStringView pattern)
    {
        Names names;
        WIN32_FIND_DATAW data = {};
        const HANDLE find = FindFirstFileW(device.Path(pattern).c_str(), &data);
        if (find == INVALID_HANDLE_VALUE)
            return names;
        do
            names.emplace_back(data.cFileName);
        while (FindNextFileW(find, &data));
        EXPECT_EQ(GetLastError(), ERROR_NO_MORE_FILES);
        EXPECT_TRUE(FindClose(find));
        return names;
    }
    DWORD ErrorOf(WStringView pattern)
    {
        WIN32_FIND_DATAW data = {};
        EXPECT_EQ(FindFirstFileW(device.Path(pattern).c_str(), &data), INVALID_HANDLE_VALUE);
        return GetLastError();
    }

    ScratchDevice device;
};

TEST_F(Find, AFolderListsItselfAndItsParentFirst)
{
    Make("b.mp3");
    Make("A.mp3");
    EXPECT_EQ(All(TEXT("*")), (Names{ TEXT("."), TEXT(".."), TEXT("A.mp3"), TEXT("b.mp3") }));
}

TEST_F(Find, StarDotStarFitsNamesWithoutADot)
{
    Make("plain");
    EXPECT_EQ(All(TEXT("*.*")), (Names{ TEXT("."), TEXT(".."), TEXT("plain") }));
}

TEST_F(Find, ASuffixIsFoundWithoutCase)
{
    Make("a.MP3");
    Make("b.mp3.txt");
    Make("c.wma");
    EXPECT_EQ(All(TEXT("*.mp3")), (Names{ TEXT("a.MP3") }));
}

TEST_F(Find, AQuestionMarkStandsForOneUnit)
{
    Make("a1.txt");
    Make("a12.txt");
    Make("b1.txt");
    EXPECT_EQ(All(TEXT("a?.txt")), (Names{ TEXT("a1.txt") }));
}

TEST_F(Find, ManyStarsFitToo)
{
    Make("one two three.mp3");
    EXPECT_EQ(All(TEXT("*o*t*e*.m*")), (Names{ TEXT("one two three.mp3") }));
}

TEST_F(Find, ANameWithoutWildcardsFindsTheFileInItsOwnSpelling)
{
    Make("Song.MP3");
    EXPECT_EQ(All(TEXT("song.mp3")), (Names{ TEXT("Song.MP3") }));
}

TEST_F(Find, BlanksAtTheEndOfThePatternAreDropped)
{
    Make("a.txt");
    EXPECT_EQ(All(TEXT("*.txt  ")), (Names{ TEXT("a.txt") }));
    EXPECT_EQ(All(TEXT("a.txt  ")), (Names{ TEXT("a.txt") }));
}

TEST_F(Find, FindDataHoldsAttributesAndSize)
{
    Make("a.txt");
    WIN32_FIND_DATAW data = {};
    const HANDLE find = FindFirstFileW(device.Path(TEXT("a.txt")).c_str(), &data);
    ASSERT_NE(find, INVALID_HANDLE_VALUE);
    EXPECT_EQ(data.nFileSizeLow, 5U);
    EXPECT_EQ(data.nFileSizeHigh, 0U);
    EXPECT_EQ(data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY, 0U);
    EXPECT_TRUE(FindClose(find));
}

TEST_F(Find, AFolderIsFoundAsOne)
{
    device.MakeFolder("user/scratch/Music");
    WIN32_FIND_DATAW data = {};
    const HANDLE find = FindFirstFileW(device.Path(TEXT("music")).c_str(), &data);
    ASSERT_NE(find, INVALID_HANDLE_VALUE);
    EXPECT_EQ(WString(data.cFileName), TEXT("Music"));
    EXPECT_EQ(data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY, FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_TRUE(FindClose(find));
}

TEST_F(Find, NoMatchTellsFileNotFound)
{
    EXPECT_EQ(ErrorOf(TEXT("*.none")), ERROR_FILE_NOT_FOUND);
}

TEST_F(Find, AMissingFolderTellsPathNotFound)
{
    EXPECT_EQ(ErrorOf(TEXT("none\\*")), ERROR_PATH_NOT_FOUND);
}

TEST_F(Find, ASearchClosesOnce)
{
    Make("a.txt");
    WIN32_FIND_DATAW data = {};
    const HANDLE find = FindFirstFileW(device.Path(TEXT("a.txt")).c_str(), &data);
    ASSERT_NE(find, INVALID_HANDLE_VALUE);
    EXPECT_FALSE(FindNextFileW(find, &data));
    EXPECT_EQ(GetLastError(), ERROR_NO_MORE_FILES);
    EXPECT_TRUE(FindClose(find));
}

TEST_F(Find, ClosingNoSearchFails)
{
    EXPECT_FALSE(FindClose(INVALID_HANDLE_VALUE));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

// Wine 8 reads the patterns of this test and the next in its own way.
TEST_F(Find, AStarAndADotFindNamesWithoutAnExtension)
{
    if (IsWine())
        GTEST_SKIP() << "Wine finds every name";
    Make("plain");
    Make("a.txt");
    EXPECT_EQ(All(TEXT("p*.")), (Names{ TEXT("plain") }));
}

TEST_F(Find, AQuestionMarkMayBeNothingBeforeADot)
{
    if (IsWine())
        GTEST_SKIP() << "Wine finds only names of that length";
    Make("a.txt");
    EXPECT_EQ(All(TEXT("a??.txt")), (Names{ TEXT("a.txt") }));
}

TEST_F(Find, AWildcardInAFolderIsAnInvalidName)
{
    device.MakeFolder("user/scratch/Music");
    EXPECT_EQ(ErrorOf(TEXT("Mus*\\*")), DWORD{ ERROR_INVALID_NAME });
    EXPECT_EQ(ErrorOf(TEXT("Mus*\\a.mp3")), DWORD{ ERROR_INVALID_NAME });
}

TEST_F(Find, NoNameIsAMissingPath)
{
    WIN32_FIND_DATAW data = {};
    EXPECT_EQ(FindFirstFileW(TEXT(""), &data), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_PATH_NOT_FOUND });
    EXPECT_EQ(FindFirstFileW(nullptr, &data), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_PATH_NOT_FOUND });
}

TEST_F(Find, AFolderIsFoundByItsDot)
{
    device.MakeFolder("user/scratch/Music");
    EXPECT_EQ(All(TEXT("Music\\.")), (Names{ TEXT("Music") }));
}

TEST_F(Find, ASearchIsNoOtherKindOfHandle)
{
    Make("a.txt");
    WIN32_FIND_DATAW data = {};
    const HANDLE find = FindFirstFileW(device.Path(TEXT("a.txt")).c_str(), &data);
    ASSERT_NE(find, INVALID_HANDLE_VALUE);
    EXPECT_FALSE(CloseHandle(find));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_INVALID_HANDLE });
    EXPECT_TRUE(FindClose(find));
    EXPECT_FALSE(FindNextFileW(find, &data));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_INVALID_HANDLE });
    EXPECT_FALSE(FindClose(nullptr));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_INVALID_HANDLE });
}

TEST_F(Find, FilesMadeAfterTheStartOfASearchDoNotDisturbIt)
{
    Make("a.txt");
    Make("b.txt");
    WIN32_FIND_DATAW data = {};
    const HANDLE find = FindFirstFileW(device.Path(TEXT("*.txt")).c_str(), &data);
    ASSERT_NE(find, INVALID_HANDLE_VALUE);
    Make("aa.mp3");
    EXPECT_TRUE(FindNextFileW(find, &data));
    EXPECT_EQ(WString(data.cFileName), TEXT("b.txt"));
    EXPECT_FALSE(FindNextFileW(find, &data));
    EXPECT_TRUE(FindClose(find));
}

} // namespace
