#include "lyrics/lyrics_context.h"

#include "lyrics/settings_texts.h"
#include "tests/lyrics/lyric_lines.h"
#include "tests/lyrics/settings_key.h"
#include "tests/lyrics/song_bytes.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

namespace {

using namespace cardsong::test;

constexpr LANGID kEnglish = 1033;

class LyricsContextTest : public ::testing::Test {
protected:
    LyricsContextTest()
    {
        context.ReloadSettings();
        context.SetSongPath(TEXT("\\SDMMC\\My Song.mp3"));
    }
    Lines All() const { return LinesOf(context.Lines()); }
    // Parses ASCII text.
    Lines Parsed(std::string_view ascii)
    {
        context.ParseText(Wide(ascii));
        return All();
    }
    int Find(std::string_view path) { return context.FindForSong(Wide(path).c_str()); }

    ScratchDevice device;
    SettingsKey key;
    LyricsContext context{ kEnglish };
};

const Lines kPlaceholders = { { 0, " My Song" }, { 15'000, " My Song" }, { 30'000, " My Song" } };

TEST_F(LyricsContextTest, BeginsWithoutLines)
{
    const LyricsContext fresh(kEnglish);
    EXPECT_EQ(LinesOf(fresh.Lines()), Lines{});
    EXPECT_FALSE(fresh.HasLyrics());
    EXPECT_FALSE(fresh.IsReady());
    EXPECT_EQ(fresh.SongPath(), TEXT(""));
    EXPECT_EQ(fresh.TitlePrefix(), TEXT(" "));
    EXPECT_EQ(fresh.TimeOffsetMs(), 0);
    EXPECT_EQ(fresh.Positions(), (LyricsPositions{ -1, -1, -1, -1 }));
    EXPECT_EQ(fresh.CurrentLineSize().cx, 0);
    EXPECT_EQ(fresh.CurrentLineSize().cy, 0);
    EXPECT_EQ(fresh.UiLanguage(), kEnglish);
}

TEST_F(LyricsContextTest, TakesTheLanguageOfTheSystem)
{
    EXPECT_EQ(LyricsContext().UiLanguage(), GetUserDefaultUILanguage());
}

TEST_F(LyricsContextTest, LyricsThatBeginLaterGetTheSongsNameAtZero)
{
    EXPECT_EQ(Parsed("[ti:Song][00:10.00]X"), (Lines{ { 0, " My Song" }, { 10'000, "X" } }));
    EXPECT_TRUE(context.HasLyrics());
    EXPECT_EQ(Parsed("[00:00.01]X"), (Lines{ { 0, " My Song" }, { 10, "X" } }));
}

TEST_F(LyricsContextTest, LyricsThatBeginAtZeroGetNothingMore)
{
    EXPECT_EQ(Parsed("[00:00.00]X[00:10.00]Y"), (Lines{ { 0, "X" }, { 10'000, "Y" } }));
}

TEST_F(LyricsContextTest, WithoutPrefixAndNameThereIsNoLineAtZero)
{
    context.SetTitlePrefix(TEXT(""));
    context.SetSongPath(TEXT(""));
    EXPECT_EQ(Parsed("[00:10.00]X"), (Lines{ { 10'000, "X" } }));
    EXPECT_EQ(Parsed("no stamps"), Lines{});
    EXPECT_FALSE(context.HasLyrics());
}

TEST_F(LyricsContextTest, TextWithoutATimeTagIsThreePlaceholderLines)
{
    EXPECT_EQ(Parsed("no [ti:tags] of time"), kPlaceholders);
    EXPECT_FALSE(context.HasLyrics());
    EXPECT_EQ(Parsed(""), kPlaceholders);
    EXPECT_EQ(Parsed("[00:01]\n[00:02]"), kPlaceholders) << "stamps without text";
}

TEST_F(LyricsContextTest, ThePrefixIsCutToAHundredUnits)
{
    context.SetTitlePrefix(WString(101, TEXT('p')));
    EXPECT_EQ(context.TitlePrefix().size(), 100U);
    context.SetTitlePrefix(TEXT("Now: "));
    context.ShowPlaceholders();
    EXPECT_EQ(All()[2], (Lines::value_type{ 30'000, "Now: My Song" }));
}

TEST_F(LyricsContextTest, EveryLoadBeginsThePositionsAnew)
{
    const auto disturb = [this] {
        context.Positions() = { 1, 2, 3, 4 };
        context.SetCurrentLineSize({ 5, 6 });
    };
    const auto expectFresh = [this] {
        EXPECT_EQ(context.Positions(), LyricsPositions{});
        EXPECT_EQ(context.CurrentLineSize().cx, 0);
        EXPECT_EQ(context.CurrentLineSize().cy, 0);
    };
    disturb();
    Parsed("[00:00]X");
    expectFresh();
    disturb();
    context.ShowPlaceholders();
    expectFresh();
    disturb();
    context.Clear();
    expectFresh();
    EXPECT_EQ(All(), Lines{});
}

TEST_F(LyricsContextTest, LinesCanBeAddedOneByOne)
{
    EXPECT_EQ(context.AddLine(5, TEXT("b")), 1);
    EXPECT_EQ(context.AddLine(3, TEXT("a")), 1);
    EXPECT_EQ(context.AddLine(7, TEXT("B")), 1);
    EXPECT_EQ(context.AddLine(9, TEXT("")), 0);
    context.RemoveRepeats();
    EXPECT_EQ(All(), (Lines{ { 3, "a" }, { 5, "b" } }));
}

TEST_F(LyricsContextTest, AFileIsReadWhole)
{
    device.WriteFile("card/a.lrc", "[00:00]\xB0\xAE\r\n[00:01]\xB5\xC4");
    context.LoadFile(TEXT("\\SDMMC\\a.lrc"));
    EXPECT_EQ(All(), (Lines{ { 0, "\u7231" }, { 1000, "\u7684" } }));
}

TEST_F(LyricsContextTest, AFileThatCannotBeOpenedIsPlaceholderLines)
{
    context.LoadFile(TEXT("\\SDMMC\\none.lrc"));
    EXPECT_EQ(All(), kPlaceholders);
    context.LoadFile(TEXT("\\SDMMC"));
    EXPECT_EQ(All(), kPlaceholders) << "nor can a folder";
}

TEST_F(LyricsContextTest, AFileAboveFourMegabytesCountsAsOneThatCannotBeOpened)
{
    std::string text = "[00:00]X";
    text.resize(4U << 20, ' ');
    device.WriteFile("card/a.lrc", text);
    context.LoadFile(TEXT("\\SDMMC\\a.lrc"));
    EXPECT_TRUE(context.HasLyrics());
    device.WriteFile("card/a.lrc", text + " ");
    context.LoadFile(TEXT("\\SDMMC\\a.lrc"));
    EXPECT_EQ(All(), kPlaceholders);
}

TEST_F(LyricsContextTest, AnEmptyFileIsPlaceholderLines)
{
    device.WriteFile("card/a.lrc", "");
    context.LoadFile(TEXT("\\SDMMC\\a.lrc"));
    EXPECT_EQ(All(), kPlaceholders);
}

// ---- sources ----

TEST_F(LyricsContextTest, TheBlockComesBeforeTheFrame)
{
    device.WriteFile("card/a.mp3", SongWithFrames(Frame("USLT", UsltData(3, "[00:00]frame"))) +
                                       SongWithBlock("LYR00012[00:00]block"));
    EXPECT_EQ(Find("\\SDMMC\\a.mp3"), 1);
    EXPECT_EQ(All(), (Lines{ { 0, "block" } }));
    EXPECT_TRUE(context.IsReady());
}

TEST_F(LyricsContextTest, TheFrameComesBeforeAFile)
{
    device.WriteFile("card/a.mp3", SongWithFrames(Frame("USLT", UsltData(3, "[00:00]\u7231"))));
    device.WriteFile("card/a.lrc", "[00:00]file");
    EXPECT_EQ(Find("\\SDMMC\\a.mp3"), 1);
    EXPECT_EQ(All(), (Lines{ { 0, "\u7231" } }));
}

TEST_F(LyricsContextTest, AFrameOfUtf16GoesStraightToTheParser)
{
    const std::string utf16("[\0"
                            "0\0:\0"
                            "0\0]\0\x31\x72",
                            12);
    device.WriteFile("card/a.mp3", SongWithFrames(Frame("USLT", UsltData(1, utf16))));
    EXPECT_EQ(Find("\\SDMMC\\a.mp3"), 1);
    EXPECT_EQ(All(), (Lines{ { 0, "\u7231" } }));
}

TEST_F(LyricsContextTest, TheSongsFolderComesBeforeTheLyricsFolder)
{
    device.WriteFile("card/Music/a.mp3", "");
    device.WriteFile("user/My Documents/Lyrics/abc.lrc", "[00:00]of the folder");
    EXPECT_EQ(Find("\\SDMMC\\Music\\abc.mp3"), 1);
    EXPECT_EQ(All(), (Lines{ { 0, "of the folder" } }));
    device.WriteFile("card/Music/abc.lrc", "[00:00]beside the song");
    EXPECT_EQ(Find("\\SDMMC\\Music\\abc.mp3"), 1);
    EXPECT_EQ(All(), (Lines{ { 0, "beside the song" } }));
}

TEST_F(LyricsContextTest, ASongOfTheRootHasItsFolderToo)
{
    device.WriteFile("user/abc.lrc", "[00:00]root");
    EXPECT_EQ(Find("\\abc.mp3"), 1);
    EXPECT_EQ(All(), (Lines{ { 0, "root" } }));
}

TEST_F(LyricsContextTest, AFailedSearchLeavesLinesAndFlagsAsTheyWere)
{
    Parsed("[00:00]X");
    context.Positions().currentLine = 0;
    EXPECT_EQ(Find("\\SDMMC\\none.mp3"), 0);
    EXPECT_EQ(All(), (Lines{ { 0, "X" } }));
    EXPECT_TRUE(context.HasLyrics());
    EXPECT_FALSE(context.IsReady());
    EXPECT_EQ(context.Positions().currentLine, 0);
    EXPECT_EQ(context.SongPath(), TEXT("\\SDMMC\\none.mp3"));

    device.WriteFile("card/a.lrc", "[00:00]Y");
    EXPECT_EQ(Find("\\SDMMC\\a.mp3"), 1);
    EXPECT_EQ(Find("\\SDMMC\\none.mp3"), 0);
    EXPECT_TRUE(context.IsReady());
    context.ClearReady();
    EXPECT_FALSE(context.IsReady());
}

TEST_F(LyricsContextTest, ASourceWithoutStampsIsFoundAndPlaceholderLines)
{
    device.WriteFile("card/My Song.mp3", SongWithFrames(Frame("USLT", UsltData(3, "no stamps"))));
    EXPECT_EQ(Find("\\SDMMC\\My Song.mp3"), 1);
    EXPECT_EQ(All(), kPlaceholders);
    EXPECT_TRUE(context.IsReady());
}

TEST_F(LyricsContextTest, ABlockOfALyingSizeLeadsToTheNextSource)
{
    std::string song = SongWithFrames(Frame("USLT", UsltData(3, "[00:00]frame"))) + SongWithBlock("x");
    song.replace(song.size() - 143, 6, "999999");
    device.WriteFile("card/a.mp3", song);
    EXPECT_EQ(Find("\\SDMMC\\a.mp3"), 1);
    EXPECT_EQ(All(), (Lines{ { 0, "frame" } }));
}

TEST_F(LyricsContextTest, NoPathHasNoLyrics)
{
    EXPECT_EQ(context.FindForSong(nullptr), 0);
    EXPECT_EQ(Find(""), 0);
    EXPECT_EQ(Find("\\" + std::string(400, 'a') + ".mp3"), 0);
}

// ---- languages ----

TEST_F(LyricsContextTest, TheLanguageOverridesTheFramesCodePage)
{
    LyricsContext taiwan(kLanguageTaiwan);
    device.WriteFile("card/a.mp3", SongWithFrames(Frame("USLT", UsltData(3, "[00:00]\xB7\x52"))));
    EXPECT_EQ(taiwan.FindForSong(TEXT("\\SDMMC\\a.mp3")), 1);
    EXPECT_EQ(LinesOf(taiwan.Lines()), (Lines{ { 0, "\u611B" } }));
}

TEST_F(LyricsContextTest, Utf8IsLookedForWhenTheStartAsksForIt)
{
    device.WriteFile("card/a.lrc", "\xEF\xBB\xBF[00:00]\u7231");
    LyricsContext prc(kLanguagePrc);
    prc.LoadFile(TEXT("\\SDMMC\\a.lrc"));
    EXPECT_NE(LinesOf(prc.Lines()), (Lines{ { 0, "\u7231" } }));
    prc.SetUtf8Detection(Utf8Detection::On);
    prc.LoadFile(TEXT("\\SDMMC\\a.lrc"));
    EXPECT_EQ(LinesOf(prc.Lines()), (Lines{ { 0, "\u7231" } }));
}

TEST_F(LyricsContextTest, Utf8IsLookedForWhenTheSettingsSaySo)
{
    device.WriteFile("card/a.lrc", "[00:00]\u7231");
    key.SetNumber("Lyrics UTF-8", 1);
    LyricsContext prc(kLanguagePrc);
    prc.ReloadSettings();
    prc.LoadFile(TEXT("\\SDMMC\\a.lrc"));
    EXPECT_EQ(LinesOf(prc.Lines()), (Lines{ { 0, "\u7231" } }));
}

TEST_F(LyricsContextTest, TextIsConvertedForTheLanguageOfTheInterface)
{
    char text[] = "\xB0\xAE";
    LyricsContext(kLanguageTaiwan).ConvertToScript(text, text);
    EXPECT_STREQ(text, "\xB7\x52");
}

// ---- settings ----

TEST_F(LyricsContextTest, ReloadingMakesTheFolder)
{
    EXPECT_TRUE(std::filesystem::is_directory(device.UserDirectory() + "/My Documents/Lyrics"));
    key.SetText("Lyrics Path", "\\SDMMC\\a\\b");
    key.SetText("Play Color", "RGB(1,2,3)");
    context.ReloadSettings();
    EXPECT_TRUE(std::filesystem::is_directory(device.CardDirectory() + "/a/b"));
    EXPECT_EQ(context.Settings().playColor, 0x030201U);
    EXPECT_EQ(context.Settings().folder, TEXT("\\SDMMC\\a\\b"));
}

TEST_F(LyricsContextTest, ReloadingLeavesTheRectangleAlone)
{
    const RECT rect = { 1, 2, 250, 60 };
    context.SetStripRect(&rect);
    key.SetText("Lyrics Rect", "RECT(5,6,7,8)");
    context.ReloadSettings();
    EXPECT_EQ(Utf8(RectText(context.StripRect())), "RECT(1,2,250,60)");
}

TEST_F(LyricsContextTest, ARectangleIsClippedAndNoneChangesNothing)
{
    const RECT large = { -1, -1, 400, 400 };
    context.SetStripRect(&large);
    EXPECT_EQ(Utf8(RectText(context.StripRect())), "RECT(0,0,284,70)");
    context.SetStripRect(nullptr);
    EXPECT_EQ(Utf8(RectText(context.StripRect())), "RECT(0,0,284,70)");
}

TEST_F(LyricsContextTest, SavingWritesWhatIsInUse)
{
    const RECT rect = { 0, 0, 250, 70 };
    context.SetStripRect(&rect);
    context.SetFolder(TEXT("\\SDMMC\\Words"));
    context.SetColors(RGB(1, 0, 0), RGB(2, 0, 0), RGB(3, 0, 0), 0);
    context.SaveSettings();
    EXPECT_TRUE(std::filesystem::is_directory(device.CardDirectory() + "/Words"));
    EXPECT_EQ(key.Text("Lyrics Path"), "\\SDMMC\\Words");
    EXPECT_EQ(key.Text("Play Color"), "RGB(1,0,0)");
    EXPECT_EQ(key.Text("Next Color"), "RGB(2,0,0)");
    EXPECT_EQ(key.Text("Lyrics Back Ground Color"), "RGB(3,0,0)");
    EXPECT_EQ(key.Number("Lyrics Transparent"), 0);
    EXPECT_EQ(key.Text("Lyrics Rect"), "RECT(0,0,250,70)");
}

TEST_F(LyricsContextTest, TheTimeOffsetIsKept)
{
    context.SetTimeOffsetMs(-500);
    EXPECT_EQ(context.TimeOffsetMs(), -500);
}

} // namespace
