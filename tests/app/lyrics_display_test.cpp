// Lyrics in the player: when they come, move, pause and go.
#include "app/lyrics_display.h"

#include "app/title_ticker.h"
#include "gui/gif_bitmap.h"
#include "lyrics/lyrics_strip.h"
#include "tests/app/player_fixture.h"

using namespace cardsong::test;

namespace {

constexpr RECT kStripPlace = { 34, 45, 284, 115 };
constexpr RECT kTimes = { 34, 115, 284, 137 };
constexpr std::uint16_t kTextWhite = 0xFFFF;

class LyricsDisplayTest : public PlayerTest {
protected:
    void AddSongWithLyrics(const std::string& name, double seconds, const std::string& lrc)
    {
        AddSong(name, seconds);
        m_device.WriteFile("card/" + name.substr(0, name.rfind('.')) + ".lrc", lrc);
    }
    void PlayThreeLines()
    {
        Start();
        AddSongWithLyrics("a.mp3", 30, "[00:00.00]First line[00:05.00]Second line[00:09.00]Third line");
        AddSong("b.mp3", 20);
        Press(VK_RETURN);
    }
    static bool IsStripVisible()
    {
        return LyricsOnScreen()->Window() != nullptr && IsWindowVisible(LyricsOnScreen()->Window()) != FALSE;
    }
    static int CountWhite(const RECT& rect)
    {
        const Frame frame = Screen();
        int count = 0;
        for (LONG y = rect.top; y < rect.bottom; ++y)
            for (LONG x = rect.left; x < rect.right; ++x)
                count += PixelOf(frame, x, y) == kTextWhite ? 1 : 0;
        return count;
    }
};

} // namespace

TEST_F(LyricsDisplayTest, BeginsWithTheWindowAndEndsWithIt)
{
    EXPECT_EQ(Lyrics(), nullptr);
    Start();
    ASSERT_NE(Lyrics(), nullptr);
    EXPECT_EQ(LyricsOnScreen()->State(), LyricsDisplay::Stopped);
    EXPECT_EQ(LyricsOnScreen()->Window(), nullptr);
    EXPECT_EQ(g_lyricsTimer, 0U);
    EXPECT_EQ(g_lyricsShown, 0);
    SendMessageW(m_window, WM_COMMAND, kCommandExit, 0);
    EXPECT_EQ(Lyrics(), nullptr);
    EXPECT_EQ(LyricsOnScreen(), nullptr);
}

TEST_F(LyricsDisplayTest, ASongWithLyricsShowsTheStripAndStartsItsTimer)
{
    PlayThreeLines();
    EXPECT_TRUE(IsStripVisible());
    EXPECT_EQ(LyricsOnScreen()->State(), LyricsDisplay::Shown);
    EXPECT_EQ(g_lyricsShown, 1);
    EXPECT_EQ(g_lyricsTimer, 200U);
    EXPECT_EQ(GetParent(LyricsOnScreen()->Window()), m_window);
}

TEST_F(LyricsDisplayTest, ASongWithoutASourceHasNoStripAndItsTitleScrolls)
{
    Start();
    AddSong("b.mp3", 20);
    Press(VK_RETURN);
    EXPECT_FALSE(IsStripVisible());
    EXPECT_EQ(g_lyricsShown, 0);
    EXPECT_EQ(g_lyricsTimer, 0U);
    const Frame before = Screen();
    Advance(3);
    EXPECT_GT(Differences(before, Screen(), kStripPlace), 20);
}

TEST_F(LyricsDisplayTest, ASourceWithoutStampsShowsPlaceholderLines)
{
    Start();
    AddSongWithLyrics("a.mp3", 60, "words without stamps");
    Press(VK_RETURN);
    EXPECT_TRUE(IsStripVisible());
    EXPECT_FALSE(Lyrics()->HasLyrics());
    EXPECT_EQ(Narrow(Lyrics()->Lines().At(0).Text()), " a");
    Advance(149);
    EXPECT_EQ(LyricsOnScreen()->CurrentLine(), 0);
    Advance(2);
    EXPECT_EQ(LyricsOnScreen()->CurrentLine(), 1);
    Advance(150);
    EXPECT_EQ(LyricsOnScreen()->CurrentLine(), 2);
    Advance(150);
    EXPECT_EQ(LyricsOnScreen()->CurrentLine(), 0);
}

TEST_F(LyricsDisplayTest, TheTimerKeepsTheStripInStepWithTheSong)
{
    PlayThreeLines();
    Advance(1);
    EXPECT_EQ(LyricsOnScreen()->CurrentLine(), 0);
    Advance(48); // 4.9 s
    EXPECT_EQ(LyricsOnScreen()->CurrentLine(), 0);
    Advance(1);
    EXPECT_EQ(LyricsOnScreen()->CurrentLine(), 1);
    Advance(40); // 9.0 s
    EXPECT_EQ(LyricsOnScreen()->CurrentLine(), 1);
    Advance(1);
    EXPECT_EQ(LyricsOnScreen()->CurrentLine(), 2);
    const SIZE size = Lyrics()->CurrentLineSize();
    Advance(200);                                          // to the song's end but one
    EXPECT_LT(Lyrics()->Positions().lineX + size.cx, 200); // it has stopped in the strip
    EXPECT_GT(Lyrics()->Positions().lineX + size.cx, 190);
}

TEST_F(LyricsDisplayTest, ASongsTextEntersAtTheRightAndLeavesAtTheLeftWithoutAJump)
{
    PlayThreeLines();
    Advance(1);
    LyricsPositions before = Lyrics()->Positions();
    EXPECT_EQ(before.startX, 225);
    for (int tick = 2; tick < 90; ++tick) {
        Advance(1);
        const LyricsPositions now = Lyrics()->Positions();
        const double most = (Lyrics()->CurrentLineSize().cx + 225) / 4000.0 * 100 + 2;
        if (now.currentLine == before.currentLine)
            EXPECT_LE(std::abs(now.lineX - before.lineX), most) << tick;
        else
            EXPECT_EQ(now.startX, before.nextLineLeft) << tick;
        before = now;
    }
    EXPECT_EQ(before.currentLine, 1);
}

TEST_F(LyricsDisplayTest, TheStripHidesTheTitleAndLeavesTheTimesAlone)
{
    PlayThreeLines();
    g_elapsedText.clear();
    g_totalText.clear();
    InvalidateRect(m_window, nullptr, FALSE);
    Pump();
    // No time of a line has come yet: what shows is the player's background.
    const Frame shown = Screen();
    const UniqueBitmap background(LoadGifBitmap(TEXT("\\Windows\\gui_musicplayer_background.gif")));
    const UniqueMemoryContext source(CreateCompatibleDC(nullptr));
    {
        const SelectedObject selected(source.Get(), background.Get());
        const HDC screen = GetDC(nullptr);
        BitBlt(screen, 34, 45, 250, 92, source.Get(), 34, 45, SRCCOPY);
        ReleaseDC(nullptr, screen);
    }
    EXPECT_EQ(Differences(shown, Screen(), { 34, 45, 284, 137 }), 0);
}

TEST_F(LyricsDisplayTest, ThePlayersOwnPaintingLeavesTheTextOfTheStrip)
{
    Start();
    AddSongWithLyrics("a.mp3", 30, "[00:00.00]####");
    Press(VK_RETURN);
    Advance(1);
    const int text = CountWhite(kStripPlace);
    EXPECT_GT(text, 50);
    Advance(40); // the title moves below, the times change beside
    EXPECT_EQ(CountWhite(kStripPlace), text);
    EXPECT_GT(CountWhite(kTimes), 20);
}

TEST_F(LyricsDisplayTest, APauseHidesTheStripAndPlayShowsItWhereTheSongIs)
{
    PlayThreeLines();
    Advance(20);
    Press(VK_RETURN);
    EXPECT_EQ(LyricsOnScreen()->State(), LyricsDisplay::Paused);
    EXPECT_FALSE(IsStripVisible());
    EXPECT_EQ(g_lyricsTimer, 0U); // nor does it take any time
    EXPECT_EQ(g_lyricsShown, 1);
    const LyricsPositions before = Lyrics()->Positions();
    Advance(60);
    EXPECT_EQ(Lyrics()->Positions(), before);
    Press(VK_RETURN);
    EXPECT_TRUE(IsStripVisible());
    EXPECT_EQ(g_lyricsTimer, 200U);
    Advance(1);
    EXPECT_EQ(LyricsOnScreen()->CurrentLine(), 0);
    Advance(29); // 5.0 s of the song
    EXPECT_EQ(LyricsOnScreen()->CurrentLine(), 1);
}

TEST_F(LyricsDisplayTest, APauseShowsTheTitleWhereTheStripWas)
{
    PlayThreeLines();
    Advance(1);
    Press(VK_RETURN);
    Advance(1);
    EXPECT_GT(CountWhite(kStripPlace), 20);
    EXPECT_EQ(LyricsOnScreen()->State(), LyricsDisplay::Paused);
}

TEST_F(LyricsDisplayTest, AStopHidesTheStripAndEndsItsTimer)
{
    PlayThreeLines();
    Advance(20);
    Tap(kStopKey);
    EXPECT_EQ(LyricsOnScreen()->State(), LyricsDisplay::Stopped);
    EXPECT_FALSE(IsStripVisible());
    EXPECT_EQ(g_lyricsTimer, 0U);
    EXPECT_EQ(g_lyricsShown, 0);
    EXPECT_FALSE(Lyrics()->IsReady());
    Advance(50);
    EXPECT_EQ(LyricsOnScreen()->CurrentLine(), 0);
}

TEST_F(LyricsDisplayTest, AfterAStopTheTitleRestsInThePlaceOfTheStrip)
{
    Start();
    AddSong("a.mp3", 30);
    Press(VK_RETURN);
    const Frame atRest = Screen();
    Tap(kStopKey);
    m_device.WriteFile("card/a.lrc", "[00:00.00]####");
    Press(VK_RETURN);
    Advance(20);
    Tap(kStopKey);
    EXPECT_EQ(Differences(atRest, Screen(), { 34, 45, 284, 137 }), 0);
}

TEST_F(LyricsDisplayTest, NextWithoutLyricsTakesTheStripAwayAndBackBringsItAnew)
{
    PlayThreeLines();
    Advance(70);
    EXPECT_EQ(LyricsOnScreen()->CurrentLine(), 1);
    Press(VK_RIGHT);
    EXPECT_FALSE(IsStripVisible());
    EXPECT_EQ(g_lyricsTimer, 0U);
    Press(VK_LEFT);
    EXPECT_TRUE(IsStripVisible());
    EXPECT_EQ(LyricsOnScreen()->CurrentLine(), kNoLine);
    Advance(1);
    EXPECT_EQ(LyricsOnScreen()->CurrentLine(), 0);
}

TEST_F(LyricsDisplayTest, NextWhilePausedLoadsTheLyricsAndLeavesThemHidden)
{
    Start();
    AddSong("a.mp3", 30);
    AddSongWithLyrics("b.mp3", 30, "[00:00.00]First[00:05.00]Second");
    Press(VK_RETURN);
    Press(VK_RETURN);
    Press(VK_RIGHT);
    EXPECT_EQ(g_isPlaying, 0);
    EXPECT_FALSE(IsStripVisible());
    EXPECT_EQ(LyricsOnScreen()->State(), LyricsDisplay::Paused);
    EXPECT_TRUE(Lyrics()->HasLyrics());
    Press(VK_RETURN);
    EXPECT_TRUE(IsStripVisible());
}

TEST_F(LyricsDisplayTest, ASeekIsFollowedAtTheNextTick)
{
    PlayThreeLines();
    Advance(10);
    Tap({ kSliderLeft + kSliderWidthPx / 2, kSliderMiddleY }); // 15 s
    Advance(1);
    EXPECT_EQ(LyricsOnScreen()->CurrentLine(), 2);
    Tap({ kSliderLeft + kSliderWidthPx / 5, kSliderMiddleY }); // 6 s
    Advance(1);
    EXPECT_EQ(LyricsOnScreen()->CurrentLine(), 1);
    SendMessageW(m_window, WM_COMMAND, kCommandBack5, 0);
    Advance(1);
    EXPECT_EQ(LyricsOnScreen()->CurrentLine(), 0);
    SendMessageW(m_window, WM_COMMAND, kCommandForward5, 0);
    Advance(1);
    EXPECT_EQ(LyricsOnScreen()->CurrentLine(), 1);
}

TEST_F(LyricsDisplayTest, TheEndOfTheSongTakesTheStripAway)
{
    Start();
    AddSongWithLyrics("a.mp3", 3, "[00:00.00]First[90:00.00]never");
    Press(VK_RETURN);
    Advance(29);
    EXPECT_TRUE(IsStripVisible());
    EXPECT_EQ(LyricsOnScreen()->CurrentLine(), 0); // stamps beyond the end never come
    Advance(2);
    EXPECT_FALSE(IsStripVisible());
    EXPECT_EQ(g_lyricsTimer, 0U);
}

TEST_F(LyricsDisplayTest, LyricsAreLookedForOnlyWhenTheSongSounds)
{
    Start();
    AddBadSong("a.mp3");
    m_device.WriteFile("card/a.lrc", "[00:00.00]First");
    Press(VK_RETURN);
    EXPECT_EQ(Narrow(Lyrics()->SongPath()), "");
    AddSongWithLyrics("b.mp3", 30, "[00:00.00]First");
    // The engine is told to run while the lyrics still know nothing of the song.
    std::string pathAtRun = "not asked";
    OnSimulatedRun([&] { pathAtRun = Narrow(Lyrics()->SongPath()); });
    Press(VK_RETURN);
    EXPECT_EQ(pathAtRun, "");
    EXPECT_EQ(Narrow(Lyrics()->SongPath()), "\\SDMMC\\b.mp3");
}

TEST_F(LyricsDisplayTest, AResumedSongIsNotSearchedAgain)
{
    PlayThreeLines();
    Advance(20);
    Press(VK_RETURN);
    m_device.WriteFile("card/a.lrc", "[00:00.00]Other");
    Press(VK_RETURN);
    EXPECT_EQ(Narrow(Lyrics()->Lines().At(0).Text()), "First line");
}

TEST_F(LyricsDisplayTest, ABroadcastOfChangedSettingsTakesEffectAtOnce)
{
    PlayThreeLines();
    Lyrics()->SetColors(1, 2, 3, 0);
    PostMessageW(HWND_BROADCAST, RegisterWindowMessageW(TEXT("Lyrics Setting Change")), 0, 0);
    Pump();
    EXPECT_EQ(Lyrics()->Settings().nextColor, RGB(255, 0, 0));
    EXPECT_TRUE(IsStripVisible());
    Press(VK_RETURN);
    PostMessageW(HWND_BROADCAST, g_msgLyricsSettingChange, 0, 0);
    Pump();
    EXPECT_EQ(LyricsOnScreen()->State(), LyricsDisplay::Paused);
    EXPECT_FALSE(IsStripVisible());
}

TEST_F(LyricsDisplayTest, TheStripIsNotTheFirstChildWhichIsTheSliders)
{
    Start();
    const HWND first = GetWindow(m_window, GW_CHILD);
    AddSongWithLyrics("a.mp3", 30, "[00:00.00]First");
    Press(VK_RETURN);
    EXPECT_EQ(GetWindow(m_window, GW_CHILD), first);
    EXPECT_NE(LyricsOnScreen()->Window(), first);
}

TEST_F(LyricsDisplayTest, ATapOnTheStripChangesNothing)
{
    PlayThreeLines();
    Advance(5);
    const HWND focused = GetFocus();
    Tap({ 150, 80 });
    EXPECT_EQ(GetFocus(), focused);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_TRUE(IsStripVisible());
}

TEST_F(LyricsDisplayTest, Utf8IsLookedForWhenTheStartAskedForIt)
{
    g_launchOptions.lyricsUtf8 = true;
    Start();
    AddSongWithLyrics("a.mp3", 30, "[00:00.00]\xE8\x8C\x89");
    Press(VK_RETURN);
    EXPECT_EQ(WStringView(Lyrics()->Lines().At(0).Text()), WStringView(TEXT("\u8309")));
}

TEST_F(LyricsDisplayTest, TheDemoSongsBringTheirWordsInEveryForm)
{
    auto tree = cardsong::kernel::CurrentDeviceTree();
    tree.cardDirectory = CARDSONG_DEVICE_TREE "/../card";
    cardsong::kernel::InstallDeviceTree(tree);
    LyricsContext lyrics(0x0409);
    struct Demo {
        const WCHAR* path;
        const WCHAR* secondLine;
        int lines; // with the title at 0
    };
    constexpr Demo kDemos[] = {
        { TEXT("\\SDMMC\\Music\\\u8309\u8389\u82B1.mp3"), TEXT("\u5C0F\u9662\u6E05\u98CE\u5439\u8FC7\u6765"), 8 },
        { TEXT("\\SDMMC\\Music\\\u9001\u5225.mp3"), TEXT("\u9EC3\u660F\u7684\u8ECA\u7AD9\u71C8\u521D\u4EAE"), 9 },
        { TEXT("\\SDMMC\\Music\\Folk\\Greensleeves.mp3"), TEXT("The river runs beneath the bridge"), 9 },
        { TEXT("\\SDMMC\\Music\\Folk\\Auld Lang Syne.MP3"), TEXT("The lamps are low, the night is long,"), 9 },
    };
    for (const Demo& demo : kDemos) {
        EXPECT_EQ(lyrics.FindForSong(demo.path), 1) << Narrow(demo.path);
        ASSERT_EQ(lyrics.Lines().Count(), demo.lines) << Narrow(demo.path);
        EXPECT_EQ(WStringView(lyrics.Lines().At(1).Text()), demo.secondLine) << Narrow(demo.path);
        EXPECT_EQ(lyrics.Lines().At(1).timeMs, 300) << Narrow(demo.path);
    }
    EXPECT_EQ(lyrics.FindForSong(TEXT("\\SDMMC\\Music\\\u5C0F\u661F\u661F.mp3")), 0);
}
