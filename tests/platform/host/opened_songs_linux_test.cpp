#include "platform/desktop_keys.h"
#include "platform/device_visit.h"
#include "platform/linux/bus/class_lock.h"
#include "tests/platform/host/named_songs.h"

#include <unistd.h>

// The player's own class, as the program names it.
cardsong::DesktopKeys cardsong::ProgramDesktopKeys()
{
    return { .mainWindowClass = TEXT("AUDIOPLAYER") };
}

using namespace cardsong::host;

namespace {

using namespace cardsong::host::test;
using OpenedSongs = NamedSongs;

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

TEST_F(OpenedSongs, WhatCannotBeMadeIsToldBeforeAPlayerIsEnded)
{
    Write(Music("a.mp3"), "song");
    const Options running = Open({ Music("a.mp3") });
    cardsong::bus::ClassLock player(running.deviceDirectory, TEXT("AUDIOPLAYER"));
    ASSERT_EQ(player.Claim(), cardsong::bus::ClaimResult::Ours);
    const Path longest = Music(std::string(255, 'a')); // no room for the extension
    std::filesystem::create_symlink("a.mp3", longest);
    Options options = OptionsFor({ longest });
    EXPECT_EQ(OpenSongs(options), UserDevice().string() + "/.cardsong-opened: File name too long");
    EXPECT_EQ(FilesBelow(Card()), Names{ "000001/a.mp3" });
    EXPECT_FALSE(std::filesystem::exists(UserDevice() / ".cardsong-opened.new"));
}

TEST_F(OpenedSongs, TheFirstReasonOfAFailureIsTold)
{
    Write(Music("a.mp3"), "song");
    std::filesystem::permissions(m_root, std::filesystem::perms::all);
    std::filesystem::permissions(UserDevice(), std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec |
                                                   std::filesystem::perms::others_read |
                                                   std::filesystem::perms::others_exec);
    Options options = OptionsFor({ Music("a.mp3") });
    const uid_t self = geteuid();
    ASSERT_EQ(self == 0 ? seteuid(65534) : 0, 0); // the superuser may write anywhere
    const std::string trouble = OpenSongs(options);
    ASSERT_EQ(seteuid(self), 0);
    EXPECT_EQ(trouble, UserDevice().string() + "/.cardsong-opened: Permission denied");
}

TEST_F(OpenedSongs, WhatAKilledStartLeftIsRemoved)
{
    Write(Music("a.mp3"), "song");
    for (const char* const left : { ".cardsong-opened.new", ".cardsong-opened.old" })
        Write(UserDevice() / left / "Card/000001/b.mp3", "left");
    static_cast<void>(Open({ Music("a.mp3") }));
    EXPECT_EQ(FilesBelow(Card()), Names{ "000001/a.mp3" });
    for (const char* const left : { ".cardsong-opened.new", ".cardsong-opened.old" })
        EXPECT_FALSE(std::filesystem::exists(UserDevice() / left)) << left;
}

TEST_F(OpenedSongs, ALinkIsCalledAsItWasNamed)
{
    Write(Music("store/0815.mp3"), "song");
    std::filesystem::create_symlink("store/0815.mp3", Music("Love.mp3"));
    std::filesystem::create_directory_symlink("store", Music("Album"));
    static_cast<void>(Open({ Music("Love.mp3"), Music("Album//") }));
    EXPECT_EQ(FilesBelow(Card()), (Names{ "000001/Love.mp3", "000002/Album/0815.mp3" }));
    EXPECT_EQ(std::filesystem::read_symlink(Card() / "000001/Love.mp3"), Music("store/0815.mp3"));
}

TEST_F(OpenedSongs, ALinkWithoutAnExtensionHasThatOfItsSong)
{
    Write(Music("store/0815.mp3"), "song");
    std::filesystem::create_symlink("store/0815.mp3", Music("latest"));
    static_cast<void>(Open({ Music("latest") }));
    EXPECT_EQ(FilesBelow(Card()), Names{ "000001/latest.mp3" });
}

TEST_F(OpenedSongs, WearTheUsersOwnPicturesAndTexts)
{
    Write(Music("a.mp3"), "song");
    Write(UserDevice() / "Windows/gui_full_bg2.gif", "picture");
    Write(UserDevice() / "Windows/more/picture.gif", "no picture of a skin");
    const Options options = Open({ Music("a.mp3") });
    const Path windows = Path(options.deviceDirectory) / "Windows";
    EXPECT_EQ(FilesBelow(windows), Names{ "gui_full_bg2.gif" });
    EXPECT_EQ(Read(windows / "gui_full_bg2.gif"), "picture");
}

TEST_F(OpenedSongs, NoSaveGoesThroughALink)
{
    Write(Music("a.mp3"), "song");
    for (const char* const name : { "play_list.new", "Play_List.TXT", "PLAY_LIST.NEW" })
        Write(UserDevice() / "Windows" / name, "the user's");
    const Options options = Open({ Music("a.mp3") });
    EXPECT_EQ(FilesBelow(Path(options.deviceDirectory) / "Windows"), Names{});
}

TEST_F(OpenedSongs, HaveTheUsersLyricsFolder)
{
    Write(Music("a.mp3"), "song");
    Write(UserDevice() / "my documents/LYRICS/a.lrc", "lyrics");
    Write(UserDevice() / "my documents/letter.txt", "dear");
    const Options options = Open({ Music("a.mp3") });
    EXPECT_EQ(FilesBelow(Path(options.deviceDirectory) / "my documents"), Names{ "LYRICS/a.lrc" });
}

TEST_F(OpenedSongs, AreFoundAsThePlayerOfTheDevice)
{
    Write(Music("a.mp3"), "song");
    EXPECT_EQ(DeviceOfPlayer(UserDevice()), UserDevice());
    const Options options = Open({ Music("a.mp3") });
    EXPECT_EQ(DeviceOfPlayer(UserDevice()), UserDevice()); // nobody plays yet
    cardsong::bus::ClassLock player(options.deviceDirectory, TEXT("AUDIOPLAYER"));
    ASSERT_EQ(player.Claim(), cardsong::bus::ClaimResult::Ours);
    EXPECT_EQ(DeviceOfPlayer(UserDevice()), options.deviceDirectory);
    EXPECT_EQ(DeviceOfPlayer(options.deviceDirectory), options.deviceDirectory);
}
