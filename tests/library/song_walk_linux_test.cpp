// Links between folders, names and permissions of this system, as a walk over the card meets them.
#include "library/song_walk.h"

#include "library/media_scan.h"
#include "tests/library/lists.h"
#include "tests/library/songs.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;
using cardsong::test::At;
using cardsong::test::EmptyLists;
using cardsong::test::ScratchDevice;
using cardsong::test::SongOfTenSeconds;

class SongWalk : public testing::Test {
protected:
    // The device paths of all songs of the card, sorted.
    std::vector<WString> Walk()
    {
        std::vector<WString> paths;
        WalkSongs(TEXT("\\SDMMC"), Subfolders::Walk, [&paths](const FoundSong& song) {
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

// Someone whom permissions bind, while it lives; root gives the device away for that.
class OrdinaryUser {
public:
    explicit OrdinaryUser(const fs::path& device)
    {
        if (geteuid() != 0)
            return;
        EXPECT_EQ(chown(device.c_str(), kNobody, kNobody), 0);
        for (const auto& entry : fs::recursive_directory_iterator(device))
            EXPECT_EQ(lchown(entry.path().c_str(), kNobody, kNobody), 0);
        m_isRoot = seteuid(kNobody) == 0;
    }
    ~OrdinaryUser()
    {
        if (!m_isRoot)
            return;
        EXPECT_EQ(seteuid(0), 0);
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    static constexpr uid_t kNobody = 65534;
    bool m_isRoot = false;
};

TEST_F(SongWalk, AFolderThatMayNotBeReadAddsNothing)
{
    m_device.WriteFile("card/closed/a.mp3");
    m_device.WriteFile("card/b.mp3");
    const OrdinaryUser user(Card().parent_path());
    fs::permissions(Card() / "closed", fs::perms::none);
    ASSERT_NE(faccessat(AT_FDCWD, (Card() / "closed").c_str(), R_OK, AT_EACCESS), 0) << "it may be read here";
    EXPECT_EQ(Walk(), (std::vector<WString>{ TEXT("\\SDMMC\\b.mp3") }));
    fs::permissions(Card() / "closed", fs::perms::owner_all);
}

TEST_F(SongWalk, ASongThatMayNotBeReadIsAddedWithoutAPlayTime)
{
    const EmptyLists lists;
    m_device.WriteFile("card/a.mp3", SongOfTenSeconds());
    const OrdinaryUser user(Card().parent_path());
    fs::permissions(Card() / "a.mp3", fs::perms::none);
    ScanMediaFolder(TEXT("\\SDMMC"), &CardSongList, true);
    ASSERT_EQ(CardSongList.GetCount(), 1);
    EXPECT_EQ(At(CardSongList, 0).duration, 0.0);
}

TEST_F(SongWalk, ASongWhoseNameIsNoTextIsReadLikeAnother)
{
    const EmptyLists lists;
    m_device.WriteFile("card/\xB8\xE8/\xC7\xFA.MP3", SongOfTenSeconds());
    ScanMediaFolder(TEXT("\\SDMMC"), &CardSongList, true);
    ASSERT_EQ(CardSongList.GetCount(), 1);
    EXPECT_EQ(At(CardSongList, 0).duration, 10.0);
    EXPECT_EQ(At(CardSongList, 0).fileSize, SongOfTenSeconds().size());
}

TEST_F(SongWalk, OfASizeTheLow32BitsAreKept)
{
    const EmptyLists lists;
    m_device.WriteFile("card/a.wma");
    fs::resize_file(Card() / "a.wma", (std::uintmax_t{ 1 } << 32) + 5);
    ScanMediaFolder(TEXT("\\SDMMC"), &CardSongList, true);
    ASSERT_EQ(CardSongList.GetCount(), 1);
    EXPECT_EQ(At(CardSongList, 0).fileSize, 5u);
}

TEST_F(SongWalk, OfACardPulledMeanwhileEndsWithWhatItFound)
{
    const EmptyLists lists;
    for (const char* name : { "a.mp3", "b.mp3", "c.mp3", "deep/d.mp3", "e.mp3", "f.mp3" })
        m_device.WriteFile(std::string("card/") + name, SongOfTenSeconds());
    const fs::path card = Card();
    ScanMediaFolder(TEXT("\\SDMMC"), &CardSongList, true, [&card] {
        if (CardSongList.GetCount() == 2 && fs::exists(card))
            fs::rename(card, card.string() + ".away");
        return true;
    });
    ASSERT_EQ(CardSongList.GetCount(), 3); // the third had been told before
    EXPECT_EQ(WString(At(CardSongList, 2).fileName), TEXT("c.mp3"));
    EXPECT_EQ(At(CardSongList, 1).duration, 10.0);
    EXPECT_EQ(At(CardSongList, 2).duration, 0.0);
}

} // namespace
