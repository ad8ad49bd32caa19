// Which lyrics files songs bring that are named.
#include "tests/platform/host/named_songs.h"

namespace {

using namespace cardsong::host::test;
using OpenedLyrics = NamedSongs;

} // namespace

TEST_F(OpenedLyrics, OfTheSongsOwnNameComeAlone)
{
    Write(Music("a.mp3"), "song");
    Write(Music("a.lrc"), "lyrics");
    Write(Music("b.lrc"), "another song's");
    static_cast<void>(Open({ Music("a.mp3") }));
    EXPECT_EQ(FilesBelow(Card()), (Names{ "000001/a.lrc", "000001/a.mp3" }));
}

TEST_F(OpenedLyrics, ElseAllOfTheFolderComeInAnyCase)
{
    Write(Music("01 - Song.mp3"), "song");
    for (const char* const name : { "Song.lrc", "b.LRC", "c.Lrc", "d.txt", "lrc", "e.lrc.bak" })
        Write(Music(name), name);
    std::filesystem::create_directory(Music("folder.lrc"));
    static_cast<void>(Open({ Music("01 - Song.mp3") }));
    EXPECT_EQ(FilesBelow(Card()), (Names{ "000001/01 - Song.mp3", "000001/Song.lrc", "000001/b.LRC", "000001/c.Lrc" }));
}

TEST_F(OpenedLyrics, BesideALinkComeBeforeThoseOfItsSong)
{
    Write(Music("store/0815.mp3"), "song");
    Write(Music("store/0815.lrc"), "the song's");
    Write(Music("Love.lrc"), "the link's");
    std::filesystem::create_symlink("store/0815.mp3", Music("Love.mp3"));
    static_cast<void>(Open({ Music("Love.mp3") }));
    EXPECT_EQ(Read(Card() / "000001/Love.lrc"), "the link's");
}

TEST_F(OpenedLyrics, BesideTheSongOfALinkAreCalledLikeTheLink)
{
    Write(Music("store/0815.mp3"), "song");
    Write(Music("store/0815.LRC"), "the song's");
    Write(Music("other.lrc"), "another song's");
    std::filesystem::create_symlink("store/0815.mp3", Music("Love.mp3"));
    static_cast<void>(Open({ Music("Love.mp3") }));
    EXPECT_EQ(FilesBelow(Card()), (Names{ "000001/Love.lrc", "000001/Love.mp3" }));
    EXPECT_EQ(Read(Card() / "000001/Love.lrc"), "the song's");
}

TEST_F(OpenedLyrics, OfBothFoldersOfALinkComeWhenNoneHasItsName)
{
    Write(Music("store/0815.mp3"), "song");
    Write(Music("store/x.lrc"), "x");
    Write(Music("y.lrc"), "y");
    std::filesystem::create_symlink("store/0815.mp3", Music("Love.mp3"));
    static_cast<void>(Open({ Music("Love.mp3") }));
    EXPECT_EQ(FilesBelow(Card()), (Names{ "000001/Love.mp3", "000001/x.lrc", "000001/y.lrc" }));
}

TEST_F(OpenedLyrics, OfASongOfTheFormerCardAreStillThere)
{
    Write(Music("a.mp3"), "song");
    Write(Music("a.lrc"), "lyrics");
    static_cast<void>(Open({ Music("a.mp3") }));
    static_cast<void>(Open({ Card() / "000001/a.mp3" })); // as a list of files used last names it
    EXPECT_EQ(Read(Card() / "000001/a.lrc"), "lyrics");
    EXPECT_EQ(Read(Card() / "000001/a.mp3"), "song");
}

TEST_F(OpenedLyrics, OfAHugeFolderAThousandEntriesAreLookedAt)
{
    Write(Music("a.mp3"), "song");
    for (int i = 0; i < 1100; ++i)
        Write(Music("lyrics " + std::to_string(i) + ".lrc"), "");
    static_cast<void>(Open({ Music("a.mp3") }));
    const std::size_t lyrics = FilesBelow(Card()).size() - 1;
    EXPECT_GE(lyrics, 999U); // the song may be one of the entries
    EXPECT_LE(lyrics, 1000U);
}

TEST_F(OpenedLyrics, ThatAreNoSongsOwnComeTwoThousandTimesAtMost)
{
    constexpr int kSongs = 50;
    constexpr int kLyrics = 50;
    std::vector<Path> songs;
    for (int i = 0; i < kSongs; ++i)
        Write(songs.emplace_back(Music("song " + std::to_string(i) + ".mp3")), "song");
    for (int i = 0; i < kLyrics; ++i)
        Write(Music("text " + std::to_string(i) + ".lrc"), "");
    Write(Music("song 49.lrc"), "its own");
    static_cast<void>(Open(songs));
    EXPECT_EQ(FilesBelow(Card()).size(), kSongs + 2'000 + 1U);
    EXPECT_EQ(Read(Card() / "000050/song 49.lrc"), "its own");
}

TEST_F(OpenedLyrics, OfAFolderStayWhereTheyAre)
{
    Write(Music("album/1.mp3"), "1");
    Write(Music("album.lrc"), "no song's");
    static_cast<void>(Open({ Music("album") }));
    EXPECT_EQ(FilesBelow(Card()), Names{ "000001/album/1.mp3" });
}
