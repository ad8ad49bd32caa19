#include "lyrics/lyrics_file_search.h"

#include "common/file_search.h"
#include "lyrics/lyrics_file.h"
#include "lyrics/lyrics_title.h"
#include "lyrics/text_similarity.h"
#include "tests/lyrics/lyric_lines.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using cardsong::test::ScratchDevice;
using cardsong::test::Utf8;
using cardsong::test::Wide;

class LyricsFileSearch : public ::testing::Test {
protected:
    // The file found on the card for a song of that name; "(none)" without one.
    std::string Find(std::string_view songName)
    {
        const auto name = FindLyricsFile(TEXT("\\SDMMC"), Wide("\\Music\\" + std::string(songName) + ".mp3").c_str());
        return name ? Utf8(*name) : "(none)";
    }
    void Write(const std::string& name, std::string_view contents = "[00:01]x")
    {
        device.WriteFile("card/" + name, contents);
    }

    ScratchDevice device;
};

TEST_F(LyricsFileSearch, AFileNamedLikeTheSongIsFound)
{
    Write("another.lrc");
    Write("My Song.lrc");
    EXPECT_EQ(Find("My Song"), "My Song.lrc");
}

TEST_F(LyricsFileSearch, ItEndsAtAPerfectMatch)
{
    Write("a Song.lrc", "[ti:Song]"); // distance 1 by its name
    Write("b.lrc", "[ti:x]");
    Write("Song.lrc");
    Write("song of all songs.lrc");
    EXPECT_EQ(Find("Song"), "Song.lrc");
}

TEST_F(LyricsFileSearch, TheFirstIsChosenAboveAThirdOfTheLength)
{
    Write("abcXYZVWU.lrc"); // 3 of 9
    EXPECT_EQ(Find("abc123456"), "(none)");
    Write("abcdYZVWU.lrc"); // 4 of 9
    EXPECT_EQ(Find("abcd23456"), "abcdYZVWU.lrc");
}

TEST_F(LyricsFileSearch, TheThirdIsAWholeNumber)
{
    Write("abXYZVWU.lrc"); // 2 of 8, a third is 2
    EXPECT_EQ(Find("ab123456"), "(none)");
    Write("abcYZVWU.lrc");
    EXPECT_EQ(Find("abc23456"), "abcYZVWU.lrc");
}

TEST_F(LyricsFileSearch, OnlyASmallerDistanceReplacesWhatIsChosen)
{
    Write("a Song 1.lrc");
    Write("b Song 2.lrc");
    Write("c Song.lrc");
    Write("d Song.lrc");
    EXPECT_EQ(Find("Song"), "c Song.lrc");
}

TEST_F(LyricsFileSearch, SpacesDoNotCount)
{
    Write("M y S o n g.lrc");
    EXPECT_EQ(Find("My Song"), "(none)") << "they part an alignment";
    Write("My Song .lrc");
    EXPECT_EQ(Find("My Song"), "My Song .lrc");
}

TEST_F(LyricsFileSearch, AStatedTitleIsComparedToo)
{
    Write("track 01.lrc", "[ti:Twinkle]\n[00:01]x");
    EXPECT_EQ(Find("Twinkle"), "track 01.lrc");
    EXPECT_EQ(Find("Frog"), "(none)");
}

TEST_F(LyricsFileSearch, ATitleIsComparedInBothScripts)
{
    Write("1.lrc", "[ti:\xB0\xAE\xB5\xC4\xB8\xE8]"); // simplified, GB2312
    const auto find = [](const WCHAR* song) { return FindLyricsFile(TEXT("\\SDMMC"), song).has_value(); };
    EXPECT_TRUE(find(TEXT("\\\u611B\u7684\u6B4C.mp3")));
    EXPECT_TRUE(find(TEXT("\\\u7231\u7684\u6B4C.mp3")));
    Write("1.lrc", "[ti:\xB7\x52\xAA\xBA\xBA\x71]"); // traditional, Big5
    EXPECT_TRUE(find(TEXT("\\\u611B\u7684\u6B4C.mp3")));
    EXPECT_TRUE(find(TEXT("\\\u7231\u7684\u6B4C.mp3")));
}

TEST_F(LyricsFileSearch, OtherExtensionsAreNotLookedAt)
{
    for (const char* name : { "Song.txt", "Song", "Song.lrcx", "Song.lrc.bak", "lrc" })
        Write(name);
    EXPECT_EQ(Find("Song"), "(none)");
    Write("sOnG.LrC", "[ti:Song]");
    EXPECT_EQ(Find("Song"), "sOnG.LrC");
}

TEST_F(LyricsFileSearch, AnEmptyOrMissingFolderHasNone)
{
    EXPECT_EQ(Find("Song"), "(none)");
    EXPECT_FALSE(FindLyricsFile(TEXT("\\Nowhere\\"), TEXT("\\Song.mp3")));
    EXPECT_FALSE(FindLyricsFile(TEXT(""), TEXT("\\Song.mp3")));
}

TEST_F(LyricsFileSearch, ASongWithoutANameHasNone)
{
    Write("x.lrc");
    Write(".lrc");
    EXPECT_EQ(Find(""), "(none)");
}

TEST_F(LyricsFileSearch, AFileAboveFourMegabytesHasNoTitle)
{
    Write("1.lrc", "[ti:Twinkle]" + std::string((4U << 20) - 12, ' '));
    EXPECT_EQ(Find("Twinkle"), "1.lrc");
    Write("1.lrc", "[ti:Twinkle]" + std::string((4U << 20) - 11, ' '));
    EXPECT_EQ(Find("Twinkle"), "(none)");
}

TEST_F(LyricsFileSearch, AFolderThatIsCalledSoIsNoFile)
{
    device.MakeFolder("card/Song.lrc");
    EXPECT_EQ(Find("Song"), "(none)");
}

TEST(IsLyricsFile, OnlyWithTheArchiveAttribute)
{
    WIN32_FIND_DATAW found = {};
    WString(TEXT("Song.lrc")).copy(found.cFileName, MAX_PATH - 1);
    for (const DWORD attributes : { 0x20U, 0x21U, 0x27U }) {
        found.dwFileAttributes = attributes;
        EXPECT_TRUE(IsLyricsFile(found)) << attributes;
    }
    for (const DWORD attributes : { 0U, 0x80U, 0x01U, 0x10U }) {
        found.dwFileAttributes = attributes;
        EXPECT_FALSE(IsLyricsFile(found)) << attributes;
    }
}

// The search as one would say it: every file is read, and every comparison made in full.
std::optional<WString> PlainlyFound(const WString& song)
{
    std::optional<WString> chosen;
    int best = 0;
    const auto compare = [&](const WString& text, const WString& file) {
        if (chosen && best == 0)
            return;
        const int longer = std::max(UnitsWithoutSpaces(song), UnitsWithoutSpaces(text));
        const int similarity = TextSimilarity(song, text);
        if (chosen ? longer - similarity < best : similarity > longer / 3) {
            chosen = file;
            best = longer - similarity;
        }
    };
    for (FileSearch search(TEXT("\\SDMMC\\*.*")); search; search.Next()) {
        const WString name = search.Entry().cFileName;
        const LyricsBytes bytes = *ReadLyricsFile((TEXT("\\SDMMC\\") + name).c_str());
        const LyricsTitle title(bytes);
        compare(name.substr(0, name.size() - 4), name);
        compare(title.Traditional(), name);
        compare(title.Simplified(), name);
    }
    return chosen;
}

TEST_F(LyricsFileSearch, AnyFolderGivesTheFileOfThePlainRule)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const std::string pieces[] = { "a", "b", "Ab", "song", "x1", " ", "\xB0\xAE", "\xB7\x52\xB7\x52", "ti" };
    const auto anyText = [&](unsigned kinds) {
        std::string text;
        for (auto count = 1 + random() % 5; count > 0; --count)
            text += pieces[random() % kinds];
        return text;
    };
    for (int round = 0; round < 6; ++round) {
        for (auto files = random() % 12; files > 0; --files)
            Write("f" + anyText(6) + "e.lrc",
                  random() % 4 == 0 ? anyText(9) : "[ti:" + anyText(9) + "][00:01]" + anyText(9));
        for (int song = 0; song < 10; ++song) {
            const std::string name = anyText(6) + "e";
            const auto expected = PlainlyFound(Wide(name));
            ASSERT_EQ(Find(name), expected ? Utf8(*expected) : "(none)") << name;
        }
    }
}

TEST(FolderOfPath, EndsWithItsBackslash)
{
    EXPECT_EQ(FolderOfPath(TEXT("\\SDMMC\\Music\\a.mp3")), TEXT("\\SDMMC\\Music\\"));
    EXPECT_EQ(FolderOfPath(TEXT("\\a.mp3")), TEXT("\\"));
    EXPECT_EQ(FolderOfPath(TEXT("a.mp3")), TEXT("\\"));
    EXPECT_EQ(FolderOfPath(TEXT("\\SDMMC\\")), TEXT("\\SDMMC\\"));
    EXPECT_EQ(FolderOfPath(TEXT("")), TEXT("\\"));
}

TEST(NameOfSong, HasNeitherFolderNorExtension)
{
    EXPECT_EQ(NameOfSong(TEXT("\\SDMMC\\a.b.mp3")), TEXT("a.b"));
    EXPECT_EQ(NameOfSong(TEXT("song")), TEXT("song"));
    EXPECT_EQ(NameOfSong(TEXT("")), TEXT(""));
    EXPECT_EQ(NameOfSong(nullptr), TEXT(""));
}

TEST(PathInFolder, HasOneBackslashBetween)
{
    EXPECT_EQ(PathInFolder(TEXT("\\a"), TEXT("b")), TEXT("\\a\\b"));
    EXPECT_EQ(PathInFolder(TEXT("\\a\\"), TEXT("b")), TEXT("\\a\\b"));
    EXPECT_EQ(PathInFolder(TEXT(""), TEXT("b")), TEXT("\\b"));
}

} // namespace
