// The archive attribute as it lies on a host's disk.
#include "lyrics/lyrics_file_search.h"

#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <sys/xattr.h>

namespace {

TEST(ArchiveAttribute, AFileWithoutItIsNeverFound)
{
    const cardsong::test::ScratchDevice device;
    device.WriteFile("card/Song.lrc", "[00:01]x");
    EXPECT_TRUE(FindLyricsFile(u"\\SDMMC", u"\\Song.mp3"));
    const std::string path = device.CardDirectory() + "/Song.lrc";
    if (setxattr(path.c_str(), "user.DOSATTRIB", "0x0", 3, 0) != 0)
        GTEST_SKIP() << "this disk keeps no extended attributes";
    EXPECT_FALSE(FindLyricsFile(u"\\SDMMC", u"\\Song.mp3"));
}

} // namespace
