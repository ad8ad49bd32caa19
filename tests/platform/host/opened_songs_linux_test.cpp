#include "platform/linux/host/opened_songs.h"

#include "platform/desktop_keys.h"
#include "platform/linux/bus/class_lock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

// The player's own class, as the program names it.
cardsong::DesktopKeys cardsong::ProgramDesktopKeys()
{
    return { .mainWindowClass = TEXT("AUDIOPLAYER") };
}

using namespace cardsong::host;

namespace {

using Path = std::filesystem::path;

class OpenedSongs : public ::testing::Test {
protected:
    void SetUp() override
    {
        std::string name = ::testing::TempDir() + "cardsong-opened-XXXXXX";
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        m_root = std::filesystem::canonical(name);
        std::filesystem::create_directories(UserDevice());
        Write(UserDevice() / "registry.ini", "volume");
        Write(UserDevice() / "Windows/play_list.txt", "the user's list");
    }
    void TearDown() override { std::filesystem::remove_all(m_root); }

    Path UserDevice() const { return m_root / "device"; }
    Path Card() const { return UserDevice() / ".cardsong-opened/Card"; }
    Path Music(const std::string& name) const { return m_root / "music" / name; }

    static void Write(const Path& file, const std::string& text)
    {
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file) << text;
    }
    static std::string Read(const Path& file)
    {
        std::ifstream stream(file);
        return { std::istreambuf_iterator<char>(stream), {} };
    }

    Options OptionsFor(const std::vector<Path>& songs) const
    {
        Options options;
        options.deviceDirectory = UserDevice();
        options.cardDirectory = "/card";
        options.songs.assign(songs.begin(), songs.end());
        return options;
    }

    Path m_root;
};

// The files of a folder and of those below it, by their paths from it; links to folders are followed.
std::vector<std::string> FilesBelow(const Path& folder)
{
    std::vector<std::string> files;
    const auto following = std::filesystem::directory_options::follow_directory_symlink;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder, following)) {
        if (entry.is_regular_file())
            files.push_back(entry.path().lexically_relative(folder));
    }
    std::ranges::sort(files);
    return files;
}

using Names = std::vector<std::string>;

} // namespace

TEST_F(OpenedSongs, WithoutOneTheCardAndTheDeviceStay)
{
    Options options = OptionsFor({});
    EXPECT_EQ(OpenSongs(options), "");
    EXPECT_EQ(options, OptionsFor({}));
    EXPECT_FALSE(std::filesystem::exists(UserDevice() / ".cardsong-opened"));
}

TEST_F(OpenedSongs, AreACardInTheOrderGiven)
{
    Write(Music("z.mp3"), "first");
    Write(Music("a.wma"), "second");
    Options options = OptionsFor({ Music("z.mp3"), Music("a.wma") });
    EXPECT_EQ(OpenSongs(options), "");
    EXPECT_EQ(options.cardDirectory, Card());
    EXPECT_EQ(FilesBelow(Card()), (Names{ "000001/z.mp3", "000002/a.wma" }));
    EXPECT_EQ(Read(Card() / "000001/z.mp3"), "first");
}

TEST_F(OpenedSongs, ArePlayedAtOnceByAPlayerWithAListOfItsOwn)
{
    Write(Music("a.mp3"), "song");
    Options options = OptionsFor({ Music("a.mp3") });
    EXPECT_EQ(OpenSongs(options), "");
    EXPECT_EQ(options.playerCommandLine, TEXT("--fill --play "));
    EXPECT_EQ(options.deviceDirectory, UserDevice() / ".cardsong-opened/Device");
    EXPECT_EQ(FilesBelow(options.deviceDirectory), Names{ "registry.ini" });
    EXPECT_EQ(Read(Path(options.deviceDirectory) / "registry.ini"), "volume");
    EXPECT_EQ(Read(UserDevice() / "Windows/play_list.txt"), "the user's list");
}

TEST_F(OpenedSongs, OfOneNameStandBesideEachOther)
{
    Write(Music("one/a.mp3"), "1");
    Write(Music("two/a.mp3"), "2");
    Options options = OptionsFor({ Music("one/a.mp3"), Music("two/a.mp3"), Music("one/a.mp3") });
    EXPECT_EQ(OpenSongs(options), "");
    EXPECT_EQ(Read(Card() / "000001/a.mp3") + Read(Card() / "000002/a.mp3") + Read(Card() / "000003/a.mp3"), "121");
}

TEST_F(OpenedSongs, BringTheirLyrics)
{
    Write(Music("a.mp3"), "song");
    Write(Music("a.lrc"), "lyrics");
    Write(Music("b.lrc"), "another song's");
    Options options = OptionsFor({ Music("a.mp3") });
    EXPECT_EQ(OpenSongs(options), "");
    EXPECT_EQ(FilesBelow(Card()), (Names{ "000001/a.lrc", "000001/a.mp3" }));
}

TEST_F(OpenedSongs, AFolderBringsItsSongs)
{
    Write(Music("album/1.mp3"), "1");
    Write(Music("album/more/2.mp3"), "2");
    Options options = OptionsFor({ Music("album/") });
    EXPECT_EQ(OpenSongs(options), "");
    EXPECT_EQ(FilesBelow(Card()), (Names{ "000001/album/1.mp3", "000001/album/more/2.mp3" }));
}

TEST_F(OpenedSongs, TheRootOfAllFoldersHasANameToo)
{
    Options options = OptionsFor({ "/" });
    EXPECT_EQ(OpenSongs(options), "");
    EXPECT_EQ(std::filesystem::read_symlink(Card() / "000001/root"), "/");
}

TEST_F(OpenedSongs, AreFoundFromTheCurrentFolder)
{
    Write(Music("a.mp3"), "song");
    const Path before = std::filesystem::current_path();
    std::filesystem::current_path(Music(""));
    Options options = OptionsFor({ "a.mp3" });
    const std::string trouble = OpenSongs(options);
    std::filesystem::current_path(before);
    EXPECT_EQ(trouble, "");
    EXPECT_EQ(Read(Card() / "000001/a.mp3"), "song");
}

TEST_F(OpenedSongs, ANameThatIsNotThereIsToldAndNothingChanges)
{
    Write(Music("a.mp3"), "song");
    Options options = OptionsFor({ Music("a.mp3"), "no such song.mp3" });
    const Options before = options;
    EXPECT_EQ(OpenSongs(options), "no such song.mp3: No such file or directory");
    EXPECT_EQ(options, before);
    EXPECT_FALSE(std::filesystem::exists(UserDevice() / ".cardsong-opened"));
}

TEST_F(OpenedSongs, WhatWasOpenedBeforeIsForgottenAndStaysWhereItIs)
{
    Write(Music("old/a.mp3"), "old");
    Write(Music("new.mp3"), "new");
    Options first = OptionsFor({ Music("old") });
    EXPECT_EQ(OpenSongs(first), "");
    Write(Path(first.deviceDirectory) / "Windows/play_list.txt", "the old list");
    Options second = OptionsFor({ Music("new.mp3") });
    EXPECT_EQ(OpenSongs(second), "");
    EXPECT_EQ(FilesBelow(Card()), Names{ "000001/new.mp3" });
    EXPECT_EQ(FilesBelow(second.deviceDirectory), Names{ "registry.ini" });
    EXPECT_EQ(Read(Music("old/a.mp3")), "old");
}

TEST_F(OpenedSongs, NoFolderOfTheUsersOwnIsTakenForTheirs)
{
    Write(Music("a.mp3"), "song");
    Write(UserDevice() / "Opened/letter.txt", "dear");
    Options options = OptionsFor({ Music("a.mp3") });
    EXPECT_EQ(OpenSongs(options), "");
    EXPECT_EQ(Read(UserDevice() / "Opened/letter.txt"), "dear");
}

TEST_F(OpenedSongs, ADeviceFolderThatCannotBeWrittenIsTold)
{
    Write(Music("a.mp3"), "song");
    Options options = OptionsFor({ Music("a.mp3") });
    options.deviceDirectory = UserDevice() / "registry.ini";
    EXPECT_EQ(OpenSongs(options), options.deviceDirectory + "/.cardsong-opened: Not a directory");
}

TEST_F(OpenedSongs, APlayerThatDoesNotEndKeepsItsSongs)
{
    Write(Music("a.mp3"), "song");
    Options running = OptionsFor({ Music("a.mp3") });
    EXPECT_EQ(OpenSongs(running), "");
    cardsong::bus::ClassLock player(running.deviceDirectory, TEXT("AUDIOPLAYER")); // and no bus to call it by
    ASSERT_EQ(player.Claim(), cardsong::bus::ClaimResult::Ours);
    Options options = OptionsFor({ Music("") });
    EXPECT_EQ(OpenSongs(options), "another player runs, and does not end");
    EXPECT_EQ(FilesBelow(Card()), Names{ "000001/a.mp3" });
}
