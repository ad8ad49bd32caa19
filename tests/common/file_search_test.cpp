#include "common/file_search.h"

#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using cardsong::test::ScratchDevice;

std::set<WString> Names(const WString& pattern)
{
    std::set<WString> names;
    for (FileSearch search(pattern.c_str()); search; search.Next()) {
        const WString name = search.Entry().cFileName;
        if (name != TEXT(".") && name != TEXT(".."))
            names.insert(name);
    }
    return names;
}

TEST(FileSearch, MeetsEveryEntryOfItsPatternOnce)
{
    ScratchDevice device;
    device.WriteFile("user/scratch/a.mp3");
    device.WriteFile("user/scratch/b.mp3");
    device.WriteFile("user/scratch/c.wma");
    device.WriteFile("user/scratch/folder/d.mp3");
    EXPECT_EQ(Names(device.Path(TEXT("*.mp3"))), (std::set<WString>{ TEXT("a.mp3"), TEXT("b.mp3") }));
    EXPECT_EQ(Names(device.Path(TEXT("*.*"))),
              (std::set<WString>{ TEXT("a.mp3"), TEXT("b.mp3"), TEXT("c.wma"), TEXT("folder") }));
    EXPECT_EQ(Names(device.Path(TEXT("*.gif"))), std::set<WString>{});
    EXPECT_EQ(Names(device.Path(TEXT("missing\\*.*"))), std::set<WString>{});
}

TEST(FileSearch, TellsSizeAndKindOfAnEntry)
{
    ScratchDevice device;
    device.WriteFile("user/scratch/song.mp3", "12345");
    const FileSearch search(device.Path(TEXT("song.mp3")).c_str());
    ASSERT_TRUE(search);
    EXPECT_EQ(search.Entry().nFileSizeLow, 5u);
    EXPECT_EQ(search.Entry().dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY, 0u);
}

TEST(IsPathThere, IsTrueForFilesAndFolders)
{
    ScratchDevice device;
    device.WriteFile("user/scratch/song.mp3");
    device.WriteFile("user/scratch/folder/song.mp3");
    EXPECT_TRUE(IsPathThere(device.Path(TEXT("song.mp3")).c_str()));
    EXPECT_TRUE(IsPathThere(device.Path(TEXT("folder")).c_str()));
    EXPECT_FALSE(IsPathThere(device.Path(TEXT("missing.mp3")).c_str()));
    EXPECT_FALSE(IsPathThere(device.Path(TEXT("song.mp3\\song.mp3")).c_str()));
}

} // namespace
