// Links between folders, names and permissions of this system, as a walk over the card meets them.
#include "library/song_walk.h"

#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;
using cardsong::test::ScratchDevice;

class SongWalk : public testing::Test {
protected:
    // The device paths of all songs of the card, sorted.
    std::vector<WString> Walk()
    {
        std::vector<WString> paths;
        WalkSongs(TEXT("\\SDMMC"), true, [&paths](const FoundSong& song) {
            paths.push_back(WString(song.folder) + TEXT('\\') + WString(song.name));
        });
        std::sort(paths.begin(), paths.end());
        return paths;
    }
    fs::path Card() const { return m_device.CardDirectory(); }

    ScratchDevice m_device;
};

TEST_F(SongWalk, AFolderReachedTwiceThroughALinkIsWalkedOnce)
{
    m_device.WriteFile("card/Music/a.mp3");
    fs::create_directory_symlink(Card() / "Music", Card() / "Same");
    EXPECT_EQ(Walk(), (std::vector<WString>{ TEXT("\\SDMMC\\Music\\a.mp3") }));
}

TEST_F(SongWalk, ALinkToTheCardItselfEndsThere)
{
    m_device.WriteFile("card/Music/a.mp3");
    fs::create_directory_symlink(Card(), Card() / "Music/again");
    EXPECT_EQ(Walk(), (std::vector<WString>{ TEXT("\\SDMMC\\Music\\a.mp3") }));
}

TEST_F(SongWalk, LinksThatBranchEverywhereAreWalkedOnceEach)
{
    m_device.WriteFile("card/0/a.mp3");
    for (int i = 0; i < 20; ++i) {
        fs::create_directories(Card() / std::to_string(i));
        for (int target = 0; target < 20; ++target)
            fs::create_directory_symlink(Card() / std::to_string(target),
                                         Card() / std::to_string(i) / ("to" + std::to_string(target)));
    }
    EXPECT_EQ(Walk().size(), 1U);
}

TEST_F(SongWalk, AFolderOutsideTheCardIsWalkedOnceThroughItsLinks)
{
    m_device.WriteFile("elsewhere/b.wma");
    fs::create_directory_symlink(Card().parent_path() / "elsewhere", Card() / "one");
    fs::create_directory_symlink(Card().parent_path() / "elsewhere", Card() / "two");
    EXPECT_EQ(Walk(), (std::vector<WString>{ TEXT("\\SDMMC\\one\\b.wma") }));
}

TEST_F(SongWalk, ALinkThatLeadsNowhereIsNoSong)
{
    fs::create_symlink(Card() / "gone.mp3", Card() / "a.mp3");
    EXPECT_TRUE(Walk().empty());
}

TEST_F(SongWalk, NamesThatAreNoTextAreTold)
{
    m_device.WriteFile("card/\xB8\xE8/\xC7\xFA.mp3");
    const auto paths = Walk();
    ASSERT_EQ(paths.size(), 1U);
    EXPECT_EQ(cardsong::kernel::FindHostPath(paths[0]), (Card() / "\xB8\xE8/\xC7\xFA.mp3").string());
}

TEST_F(SongWalk, AFolderThatMayNotBeReadAddsNothing)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "everything may be read here";
    m_device.WriteFile("card/closed/a.mp3");
    m_device.WriteFile("card/b.mp3");
    fs::permissions(Card() / "closed", fs::perms::none);
    EXPECT_EQ(Walk(), (std::vector<WString>{ TEXT("\\SDMMC\\b.mp3") }));
    fs::permissions(Card() / "closed", fs::perms::owner_all);
}

} // namespace
