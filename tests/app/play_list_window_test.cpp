#include "app/title_ticker.h"
#include "tests/app/list_windows_fixture.h"

using namespace cardsong::test;

namespace {

class PlayListWindowTest : public ListWindowsTest {
protected:
    // The list keys a, b, c, ... of which one plays.
    void PlaySong(int number)
    {
        MakeCurrent(number);
        Press(VK_RETURN);
        ASSERT_EQ(g_isPlaying, 1);
        ASSERT_EQ(g_currentNumber, number);
    }
};

} // namespace

// ---- opening and closing ----

TEST_F(PlayListWindowTest, OpensOverTheWholeScreenWithItsControlId)
{
    AddSongs({ "a.mp3" });
    OpenPlayList();
    const HWND window = PlayListWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(GetDlgCtrlID(window), 50);
    RECT place{};
    GetWindowRect(window, &place);
    EXPECT_EQ(place.right - place.left, 320);
    EXPECT_EQ(place.bottom - place.top, 240);
    EXPECT_EQ(GetForegroundWindow(), window);
    EXPECT_EQ(GetWindow(window, GW_OWNER), m_window);
}

TEST_F(PlayListWindowTest, HasItsSoftKeysInOrderFromTheLeft)
{
    AddSongs({ "a.mp3" });
    OpenPlayList();
    LONG left = 0;
    for (const int command : { 29, 33, 25, 31, 28, 16 }) {
        RECT place{};
        ASSERT_TRUE(GetWindowRect(GetDlgItem(PlayListWindow(), command), &place)) << command;
        EXPECT_EQ(place.left, left) << command;
        EXPECT_EQ(place.top, 208) << command;
        left += 53;
        EXPECT_EQ(place.right, left) << command;
    }
    EXPECT_NE(GetDlgItem(PlayListWindow(), 40), nullptr);
    EXPECT_NE(GetDlgItem(PlayListWindow(), 41), nullptr);
}

TEST_F(PlayListWindowTest, ShowsEachSongUnderItsNumberWithItsTimeAndNoCheckBox)
{
    AddSongs({ "a.mp3", "b.mp3" });
    SongList(PlayList).At(1).duration = 215;
    OpenPlayList();
    EXPECT_EQ(LabelsOf(PlayListRows()), (Texts{ "1 a.mp3", "2 b.mp3" }));
    EXPECT_EQ(Narrow(PlayListRows()[0].secondaryText), "--:--");
    EXPECT_EQ(Narrow(PlayListRows()[1].secondaryText), "3:35");
    EXPECT_EQ(PlayListRows()[0].firstCheckState, 4);
}

TEST_F(PlayListWindowTest, OfAnEmptyListTakesTheWholeCardBeforeItOpens)
{
    PutOnCard({ "b.mp3", "A.WMA", "Music/c.mp3", "text.txt" });
    OpenPlayList();
    EXPECT_EQ(NamesOf(PlayList), (Texts{ "a.wma", "b.mp3", "c.mp3" }));
    EXPECT_EQ(LabelsOf(PlayListRows()), (Texts{ "1 a.wma", "2 b.mp3", "3 c.mp3" }));
    EXPECT_TRUE(CardSongList.IsEmpty());
    EXPECT_EQ(Screen(), PlayListOpenedAnew());
}

TEST_F(PlayListWindowTest, OfAListWithSongsTakesNothingFromTheCard)
{
    AddSongs({ "a.mp3" });
    PutOnCard({ "b.mp3" });
    OpenPlayList();
    EXPECT_EQ(NamesOf(PlayList), (Texts{ "a.mp3" }));
}

TEST_F(PlayListWindowTest, OfAnEmptyListOnAnEmptyCardOpensEmpty)
{
    OpenPlayList();
    EXPECT_NE(PlayListWindow(), nullptr);
    const Frame empty = Screen();
    for (const POINT place : { RowPlace(0), kDropKey, kAllKey, kClearKey, kScrollDownKey, kPlayMarkedKey }) {
        Tap(place);
        EXPECT_TRUE(PlayList.IsEmpty());
        EXPECT_EQ(g_songLoaded, 0);
        EXPECT_EQ(Screen(), empty);
    }
    EXPECT_NE(PlayListWindow(), nullptr);
}

TEST_F(PlayListWindowTest, BackClosesItAndLeavesNoSongMarked)
{
    AddSongs({ "a.mp3", "b.mp3" });
    const Frame player = Screen();
    OpenPlayList();
    Tap(RowPlace(1));
    ASSERT_EQ(Marks(), (Numbers{ 0, 2 }));
    Tap(kListBackKey);
    EXPECT_EQ(PlayListWindow(), nullptr);
    EXPECT_EQ(Marks(), (Numbers{ 0, 0 }));
    EXPECT_EQ(GetForegroundWindow(), m_window);
    EXPECT_EQ(Screen(), player);
}

TEST_F(PlayListWindowTest, TheExitKeyClosesItAndKeepsTheMark)
{
    AddSongs({ "a.mp3", "b.mp3" });
    OpenPlayList();
    Tap(RowPlace(1));
    Press(VK_F24);
    EXPECT_EQ(PlayListWindow(), nullptr);
    EXPECT_FALSE(m_hasQuit);
    EXPECT_EQ(Marks(), (Numbers{ 0, 2 }));
    Press(VK_F24);
    EXPECT_TRUE(m_hasQuit);
}

TEST_F(PlayListWindowTest, EveryCommandIsSafeAfterItWasClosedByOthers)
{
    AddSongs({ "a.mp3", "b.mp3", "c.mp3", "d.mp3", "e.mp3" });
    for (const bool isDestroyed : { false, true }) {
        OpenPlayList();
        if (isDestroyed)
            DestroyWindow(PlayListWindow());
        else
            SendMessageW(PlayListWindow(), WM_CLOSE, 0, 0);
        Pump();
        Notify(50, 1);
        Send(33);
        Send(31);
        Send(16);
        EXPECT_EQ(PlayListWindow(), nullptr);
        EXPECT_EQ(PlayList.GetCount(), 5); // one left, and came back from the card
    }
    Send(28);
    EXPECT_TRUE(PlayList.IsEmpty());
    Send(29);
    EXPECT_EQ(g_songLoaded, 0);
}

TEST_F(PlayListWindowTest, OpensAgainAfterEachWayOfClosing)
{
    AddSongs({ "a.mp3" });
    for (const POINT place : { kListBackKey, kPlayMarkedKey }) {
        OpenPlayList();
        Tap(place);
        ASSERT_EQ(PlayListWindow(), nullptr);
    }
    OpenPlayList();
    EXPECT_NE(PlayListWindow(), nullptr);
}

TEST_F(PlayListWindowTest, AskedForTwiceIsOneWindow)
{
    AddSongs({ "a.mp3" });
    OpenPlayList();
    Send(24);
    Tap(kListBackKey);
    EXPECT_EQ(PlayListWindow(), nullptr);
    EXPECT_EQ(GetForegroundWindow(), m_window);
}

TEST_F(PlayListWindowTest, GoesWithThePlayer)
{
    AddSongs({ "a.mp3" });
    OpenLibrary();
    ASSERT_NE(LibraryWindow(), nullptr);
    PostMessageW(m_window, g_msgMassStorage, 0, 0);
    Pump();
    EXPECT_TRUE(m_hasQuit);
    EXPECT_EQ(PlayListWindow(), nullptr);
    EXPECT_EQ(LibraryWindow(), nullptr);
    EXPECT_FALSE(IsWindow(m_window));
}

TEST_F(PlayListWindowTest, HoldsUpNoEndThatTheSystemAsksFor)
{
    AddSongs({ "a.mp3" });
    OpenLibrary();
    cardsong::user::PressExitKey();
    Pump();
    EXPECT_TRUE(m_hasQuit);
    EXPECT_FALSE(IsWindow(m_window));
}

TEST_F(PlayListWindowTest, MusicGoesOnBehindIt)
{
    AddSongs({ "a.mp3", "b.mp3" });
    PlaySong(1);
    OpenPlayList();
    Advance(50);
    EXPECT_EQ(Narrow(g_elapsedText), "0:05");
    EXPECT_EQ(g_isPlaying, 1);
    Tap(kSongsKey);
    Advance(20);
    EXPECT_EQ(Narrow(g_elapsedText), "0:07");
    EXPECT_EQ(g_isPlaying, 1);
}

TEST_F(PlayListWindowTest, IsNotPaintedOverByThePlayerBehindIt)
{
    AddSongs({ "a.mp3", "b.mp3" });
    PlaySong(1);
    OpenPlayList();
    const Frame before = Screen();
    Advance(20);
    EXPECT_EQ(Screen(), before);
}

// ---- the marked song ----

TEST_F(PlayListWindowTest, ATapMarksItsSongAlone)
{
    AddSongs({ "a.mp3", "b.mp3", "c.mp3", "d.mp3", "e.mp3" });
    OpenPlayList();
    Tap(RowPlace(2));
    EXPECT_EQ(Marks(), (Numbers{ 0, 0, 3, 0, 0 }));
    EXPECT_EQ(HighlightedRows(), (Numbers{ 2 }));
    Tap(RowPlace(0));
    EXPECT_EQ(Marks(), (Numbers{ 1, 0, 0, 0, 0 }));
    EXPECT_EQ(HighlightedRows(), (Numbers{ 0 }));
    Tap(kScrollDownKey);
    EXPECT_EQ(Marks(), (Numbers{ 1, 0, 0, 0, 0 }));
    Tap(RowPlace(1)); // behind the last
    EXPECT_EQ(Marks(), (Numbers{ 1, 0, 0, 0, 0 }));
    Tap(RowPlace(0));
    EXPECT_EQ(Marks(), (Numbers{ 0, 0, 0, 0, 5 }));
    EXPECT_EQ(g_songLoaded, 0);
}

TEST_F(PlayListWindowTest, ANoticeOfNoSongChangesNothing)
{
    AddSongs({ "a.mp3", "b.mp3" });
    OpenPlayList();
    Tap(RowPlace(1));
    for (const LPARAM index : { LPARAM{ -1 }, LPARAM{ 2 }, LPARAM{ INT_MAX }, LPARAM{ INT_MIN } })
        Notify(50, index);
    EXPECT_EQ(Marks(), (Numbers{ 0, 2 }));
    Notify(49, 0);
    EXPECT_EQ(Marks(), (Numbers{ 0, 2 }));
}

TEST_F(PlayListWindowTest, AMarkLeavesTheSongThatPlaysTheCurrentOne)
{
    AddSongs({ "a.mp3", "b.mp3" });
    PlaySong(1);
    OpenPlayList();
    Tap(RowPlace(1));
    EXPECT_EQ(g_currentNumber, 1);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_EQ(Narrow(g_titleText), "01.a");
}

TEST_F(PlayListWindowTest, OpensOnThePageOfTheMarkedSong)
{
    AddSongs({ "a.mp3", "b.mp3", "c.mp3", "d.mp3", "e.mp3", "f.mp3" });
    PlaySong(6);
    OpenPlayList();
    EXPECT_EQ(HighlightedRows(), (Numbers{ 1 }));
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(PlayListWindow(), 41)));
    Tap(kScrollUpKey);
    EXPECT_EQ(HighlightedRows(), Numbers{});
    EXPECT_EQ(Marks(), (Numbers{ 0, 0, 0, 0, 0, 6 }));
}

TEST_F(PlayListWindowTest, ShowsTheMarkOfTheSongThatFollows)
{
    AddSongs({ "a.mp3", "b.mp3", "c.mp3", "d.mp3", "e.mp3" });
    PlaySong(3);
    OpenPlayList();
    ASSERT_EQ(HighlightedRows(), (Numbers{ 2 }));
    Send(kCommandNext);
    EXPECT_EQ(g_currentNumber, 4);
    EXPECT_EQ(HighlightedRows(), (Numbers{ 3 }));
    Send(kCommandNext); // to the second page, which the user did not ask for
    EXPECT_EQ(g_currentNumber, 5);
    EXPECT_EQ(HighlightedRows(), Numbers{});
    Tap(kScrollDownKey);
    Send(kCommandPrevious);
    EXPECT_EQ(HighlightedRows(), Numbers{});
    Tap(kScrollUpKey);
    Send(kCommandPrevious);
    EXPECT_EQ(HighlightedRows(), (Numbers{ 2 }));
}

// ---- playing ----

TEST_F(PlayListWindowTest, PlaysTheMarkedSongAndCloses)
{
    AddSongs({ "a.mp3", "b.mp3", "c.mp3" });
    OpenPlayList();
    Tap(RowPlace(2));
    Tap(kPlayMarkedKey);
    EXPECT_EQ(PlayListWindow(), nullptr);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_EQ(g_currentNumber, 3);
    EXPECT_EQ(Narrow(g_titleText), "03.c");
    EXPECT_EQ(Marks(), (Numbers{ 0, 0, 3 }));
}

TEST_F(PlayListWindowTest, PlaysTheFirstSongWhereNoneIsMarked)
{
    AddSongs({ "a.mp3", "b.mp3" });
    OpenPlayList();
    Tap(kPlayMarkedKey);
    EXPECT_EQ(Narrow(g_titleText), "01.a");
    EXPECT_EQ(Marks(), (Numbers{ 1, 0 }));
}

TEST_F(PlayListWindowTest, PlayStopsTheSongThatSounds)
{
    AddSongs({ "a.mp3", "b.mp3" });
    PlaySong(1);
    Advance(30);
    OpenPlayList();
    Tap(RowPlace(1));
    TakeSimulatedCalls();
    Tap(kPlayMarkedKey);
    EXPECT_EQ(Narrow(g_titleText), "02.b");
    EXPECT_EQ(Narrow(g_elapsedText), "0:00");
    EXPECT_EQ(g_isPlaying, 1);
}

TEST_F(PlayListWindowTest, PlayBeginsTheMarkedSongAnewThoughItWasPaused)
{
    AddSongs({ "a.mp3", "b.mp3" });
    PlaySong(2);
    Advance(30);
    Press(VK_RETURN);
    OpenPlayList();
    Tap(kPlayMarkedKey);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_EQ(g_currentNumber, 2);
    Advance(10);
    EXPECT_EQ(Narrow(g_elapsedText), "0:01");
}

TEST_F(PlayListWindowTest, ShowsTheLengthThatASongTurnsOutToHave)
{
    AddSongs({ "a.mp3", "b.mp3" });
    OpenPlayList();
    Send(kCommandPlay);
    EXPECT_EQ(Narrow(PlayListRows()[0].secondaryText), "0:30");
    EXPECT_EQ(Screen(), PlayListOpenedAnew());
}

TEST_F(PlayListWindowTest, ShowsThatAFileWithoutMusicHasLeft)
{
    AddSongs({ "a.mp3" });
    AddBadSong("bad.mp3");
    AddSongs({ "c.mp3", "d.mp3", "e.mp3" });
    PlaySong(1);
    OpenPlayList();
    Send(kCommandNext);
    EXPECT_EQ(NamesOf(PlayList), (Texts{ "a.mp3", "c.mp3", "d.mp3", "e.mp3" }));
    EXPECT_EQ(LabelsOf(PlayListRows()), (Texts{ "1 a.mp3", "2 c.mp3", "3 d.mp3", "4 e.mp3" }));
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(PlayListWindow(), 41)));
    EXPECT_EQ(Screen(), PlayListOpenedAnew());
}
