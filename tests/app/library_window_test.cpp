#include "app/title_ticker.h"
#include "gui/skin_list_window.h"
#include "tests/app/list_windows_fixture.h"

using namespace cardsong::test;

namespace {

class LibraryWindowTest : public ListWindowsTest {
protected:
    // A play list with m.mp3, and the library with a to e.
    void OpenLibraryOfFive()
    {
        AddSongs({ "m.mp3" });
        PutOnCard({ "a.mp3", "b.mp3", "c.mp3", "d.mp3", "e.mp3" });
        OpenLibrary();
        ASSERT_EQ(NamesOf(CardSongList), (Texts{ "a.mp3", "b.mp3", "c.mp3", "d.mp3", "e.mp3" }));
    }
};

} // namespace

TEST_F(LibraryWindowTest, ShowsTheSongsOfTheCardThatAreNotInThePlayList)
{
    AddSongs({ "m.mp3" });
    PutOnCard({ "a.mp3", "deep/M.mp3", "deep/z.wma" });
    OpenLibrary();
    EXPECT_EQ(LabelsOf(CardSongRows()), (Texts{ "1 a.mp3", "2 z.wma" }));
    EXPECT_EQ(Checks(), (Numbers{ 0, 0 }));
    EXPECT_EQ(NamesOf(PlayList), (Texts{ "m.mp3" }));
    const HWND window = LibraryWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(GetDlgCtrlID(window), 51);
    EXPECT_EQ(GetForegroundWindow(), window);
    EXPECT_NE(PlayListWindow(), nullptr);
}

TEST_F(LibraryWindowTest, HasItsSoftKeysInOrderFromTheLeft)
{
    OpenLibraryOfFive();
    LONG left = 0;
    for (const int command : { 30, 35 }) {
        RECT place{};
        ASSERT_TRUE(GetWindowRect(GetDlgItem(LibraryWindow(), command), &place)) << command;
        EXPECT_EQ(place.left, left) << command;
        EXPECT_EQ(place.top, 208) << command;
        left += 80;
        EXPECT_EQ(place.right, left) << command;
    }
    EXPECT_NE(GetDlgItem(LibraryWindow(), 40), nullptr);
    EXPECT_NE(GetDlgItem(LibraryWindow(), 41), nullptr);
}

TEST_F(LibraryWindowTest, IsCalled123WhereTheLanguageHasNoTitleForIt)
{
    FreeLibrary(g_hStringModule);
    g_hStringModule = nullptr;
    AddSongs({ "m.mp3" });
    Send(25);
    const HWND window = FindWindowW(TEXT("123"), nullptr);
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(GetDlgCtrlID(window), 51);
}

TEST_F(LibraryWindowTest, OfACardWithNothingNewOpensEmpty)
{
    AddSongs({ "m.mp3" });
    OpenLibrary();
    ASSERT_NE(LibraryWindow(), nullptr);
    const Frame empty = Screen();
    for (const POINT place : { RowPlace(0), kCheckAllKey, kScrollDownKey }) {
        Tap(place);
        EXPECT_EQ(Screen(), empty);
    }
    Tap(kDoneKey);
    EXPECT_EQ(LibraryWindow(), nullptr);
    EXPECT_EQ(NamesOf(PlayList), (Texts{ "m.mp3" }));
}

TEST_F(LibraryWindowTest, KeepsWhatItFoundBeforeAndAddsWhatIsNew)
{
    OpenLibraryOfFive();
    Press(VK_F24);
    RemoveFromCard("b.mp3");
    PutOnCard({ "0.mp3" });
    Tap(kSongsKey);
    EXPECT_EQ(NamesOf(CardSongList), (Texts{ "a.mp3", "b.mp3", "c.mp3", "d.mp3", "e.mp3", "0.mp3" }));
}

TEST_F(LibraryWindowTest, OpensWithNothingChecked)
{
    OpenLibraryOfFive();
    Tap(RowPlace(1));
    ASSERT_EQ(Checks(), (Numbers{ 0, 1, 0, 0, 0 }));
    Press(VK_F24);
    EXPECT_EQ(LibraryWindow(), nullptr);
    Tap(kSongsKey);
    EXPECT_EQ(Checks(), (Numbers{ 0, 0, 0, 0, 0 }));
    EXPECT_EQ(NamesOf(PlayList), (Texts{ "m.mp3" }));
}

TEST_F(LibraryWindowTest, OpensOnItsFirstPageWithNoRowSelected)
{
    OpenLibraryOfFive();
    const Frame first = Screen();
    Tap(kScrollDownKey);
    Tap(RowPlace(0));
    Press(VK_F24);
    Tap(kSongsKey);
    EXPECT_EQ(Screen(), first);
}

TEST_F(LibraryWindowTest, ATapTurnsTheBoxOfItsRow)
{
    OpenLibraryOfFive();
    constexpr RECT box{ 0, 73, 45, 117 };
    Tap(RowPlace(1));
    EXPECT_EQ(Checks(), (Numbers{ 0, 1, 0, 0, 0 }));
    const Frame checked = Screen();
    Tap(RowPlace(1));
    EXPECT_EQ(Checks(), (Numbers{ 0, 0, 0, 0, 0 }));
    EXPECT_GT(Differences(checked, Screen(), box), 20);
    Tap(RowPlace(1));
    EXPECT_EQ(Screen(), checked);
}

TEST_F(LibraryWindowTest, ATapOnTheSecondPageTurnsTheBoxOfItsSong)
{
    OpenLibraryOfFive();
    Tap(kScrollDownKey);
    Tap(RowPlace(0));
    Tap(RowPlace(1)); // behind the last
    EXPECT_EQ(Checks(), (Numbers{ 0, 0, 0, 0, 1 }));
}

TEST_F(LibraryWindowTest, ANoticeOfNoSongChangesNothing)
{
    OpenLibraryOfFive();
    for (const LPARAM index : { LPARAM{ -1 }, LPARAM{ 5 }, LPARAM{ INT_MAX }, LPARAM{ INT_MIN } })
        Notify(51, index);
    EXPECT_EQ(Checks(), (Numbers{ 0, 0, 0, 0, 0 }));
}

TEST_F(LibraryWindowTest, CheckAllChecksAllUnlessAllAreChecked)
{
    OpenLibraryOfFive();
    const Frame none = Screen();
    Tap(kCheckAllKey);
    EXPECT_EQ(Checks(), (Numbers{ 1, 1, 1, 1, 1 }));
    const Frame all = Screen();
    constexpr RECT boxes{ 0, 27, 45, 208 };
    EXPECT_GT(Differences(none, all, boxes), 80);
    Tap(kCheckAllKey);
    EXPECT_EQ(Checks(), (Numbers{ 0, 0, 0, 0, 0 }));
    EXPECT_EQ(Screen(), none);
    Notify(51, 2);
    Tap(kCheckAllKey);
    EXPECT_EQ(Checks(), (Numbers{ 1, 1, 1, 1, 1 }));
    Notify(51, 4);
    Tap(kCheckAllKey);
    EXPECT_EQ(Checks(), (Numbers{ 1, 1, 1, 1, 1 }));
    EXPECT_EQ(Screen(), all);
}

TEST_F(LibraryWindowTest, DoneMovesTheCheckedSongsToTheEndOfThePlayList)
{
    OpenLibraryOfFive();
    Tap(RowPlace(3));
    Tap(RowPlace(1));
    Tap(kDoneKey);
    EXPECT_EQ(LibraryWindow(), nullptr);
    EXPECT_EQ(NamesOf(PlayList), (Texts{ "m.mp3", "b.mp3", "d.mp3" }));
    EXPECT_EQ(NamesOf(CardSongList), (Texts{ "a.mp3", "c.mp3", "e.mp3" }));
    EXPECT_EQ(LabelsOf(PlayListRows()), (Texts{ "1 m.mp3", "2 b.mp3", "3 d.mp3" }));
    EXPECT_EQ(GetForegroundWindow(), PlayListWindow());
    EXPECT_EQ(Screen(), PlayListOpenedAnew());
    Tap(kSongsKey);
    EXPECT_EQ(LabelsOf(CardSongRows()), (Texts{ "1 a.mp3", "2 c.mp3", "3 e.mp3" }));
    EXPECT_EQ(Checks(), (Numbers{ 0, 0, 0 }));
}

TEST_F(LibraryWindowTest, GivesTheKeysBackToThePlayListWhenItIsClosed)
{
    OpenLibraryOfFive();
    Press(VK_F24);
    EXPECT_EQ(GetForegroundWindow(), PlayListWindow());
    Tap(kSongsKey);
    Tap(kDoneKey);
    EXPECT_EQ(GetForegroundWindow(), PlayListWindow());
    Press(VK_F24);
    EXPECT_EQ(PlayListWindow(), nullptr);
    EXPECT_EQ(GetForegroundWindow(), m_window);
    EXPECT_FALSE(m_hasQuit);
}

TEST_F(LibraryWindowTest, DoneWithNothingCheckedChangesNoList)
{
    OpenLibraryOfFive();
    Tap(kDoneKey);
    EXPECT_EQ(LibraryWindow(), nullptr);
    EXPECT_EQ(NamesOf(PlayList), (Texts{ "m.mp3" }));
    EXPECT_EQ(CardSongList.GetCount(), 5);
}

TEST_F(LibraryWindowTest, DoneWithAllCheckedEmptiesTheLibrary)
{
    OpenLibraryOfFive();
    Tap(kCheckAllKey);
    Tap(kDoneKey);
    EXPECT_EQ(PlayList.GetCount(), 6);
    EXPECT_TRUE(CardSongList.IsEmpty());
    Tap(kSongsKey);
    EXPECT_TRUE(CardSongList.IsEmpty());
}

TEST_F(LibraryWindowTest, TheRequestToAddSongsIsObeyedWhileItIsOpen)
{
    OpenLibraryOfFive();
    Notify(51, 0);
    SendMessageW(m_window, g_msgUserAddSongs, 0, 0);
    Pump();
    EXPECT_EQ(NamesOf(PlayList), (Texts{ "m.mp3", "a.mp3" }));
    EXPECT_EQ(LabelsOf(CardSongRows()), (Texts{ "1 b.mp3", "2 c.mp3", "3 d.mp3", "4 e.mp3" }));
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(LibraryWindow(), 41))); // one page is left
    Tap(RowPlace(0));
    EXPECT_EQ(Checks(), (Numbers{ 1, 0, 0, 0 }));
}

TEST_F(LibraryWindowTest, EveryCommandIsSafeAfterItWasClosedByOthers)
{
    OpenLibraryOfFive();
    DestroyWindow(LibraryWindow());
    Notify(51, 1);
    Send(30);
    EXPECT_EQ(Checks(), (Numbers{ 1, 1, 1, 1, 1 }));
    Send(35);
    EXPECT_EQ(PlayList.GetCount(), 6);
    EXPECT_EQ(LibraryWindow(), nullptr);
}

TEST_F(LibraryWindowTest, IsFreedWithThePlayerWhileItIsOpen)
{
    OpenLibraryOfFive();
    DestroyWindow(m_window);
    Pump();
    EXPECT_TRUE(m_hasQuit);
    EXPECT_EQ(LibraryWindow(), nullptr);
    EXPECT_EQ(SkinListWnd::Current(), nullptr);
    EXPECT_TRUE(CardSongList.IsEmpty());
    EXPECT_TRUE(PlayList.IsEmpty());
}

// ---- both windows ----

TEST_F(LibraryWindowTest, TapsAloneFillAPlayListAndPlayIt)
{
    PutOnCard({ "a.mp3", "b.mp3", "c.mp3", "d.mp3", "e.mp3", "f.mp3" });
    Tap(kPlayListKey); // takes the whole card
    Tap(kClearKey);
    Tap(kSongsKey);
    Tap(RowPlace(1)); // b
    Tap(kScrollDownKey);
    Tap(RowPlace(0)); // e
    Tap(RowPlace(1)); // f
    Tap(RowPlace(0)); // e no more
    Tap(kScrollUpKey);
    Tap(RowPlace(2)); // c
    Tap(kDoneKey);
    EXPECT_EQ(NamesOf(PlayList), (Texts{ "b.mp3", "c.mp3", "f.mp3" }));
    Tap(RowPlace(0));
    Tap(kDropKey);
    Tap(RowPlace(1));
    Tap(kPlayMarkedKey);
    EXPECT_EQ(Narrow(g_titleText), "02.f");
    EXPECT_EQ(g_isPlaying, 1);
    Tap(kPlayListKey);
    Tap(kAllKey);
    EXPECT_EQ(NamesOf(PlayList), (Texts{ "c.mp3", "f.mp3", "b.mp3", "a.mp3", "d.mp3", "e.mp3" }));
    Tap(kListBackKey);
    EXPECT_EQ(GetForegroundWindow(), m_window);
    EXPECT_EQ(g_isPlaying, 1);
    Tap(kExitKey);
    EXPECT_TRUE(m_hasQuit);
}

// A list has keys for its pages and for leaving; its soft keys are for fingers, and are told as commands here.
TEST_F(LibraryWindowTest, KeysAloneTurnThePagesOfBothWindowsAndLeaveThem)
{
    AddSongs({ "m.mp3", "n.mp3", "o.mp3", "p.mp3", "q.mp3" });
    PutOnCard({ "a.mp3", "b.mp3", "c.mp3", "d.mp3", "e.mp3" });
    Press(VK_RETURN);
    Send(24);
    const Frame listFirst = Screen();
    Press(VK_DOWN);
    const Frame listSecond = Screen();
    EXPECT_NE(listFirst, listSecond);
    SendMessageW(PlayListWindow(), WM_COMMAND, 25, 0);
    Pump();
    const Frame libraryFirst = Screen();
    Press(VK_DOWN);
    EXPECT_NE(Screen(), libraryFirst);
    Press(VK_DOWN); // there is no third page
    Press(VK_UP);
    EXPECT_EQ(Screen(), libraryFirst);
    Press(VK_RETURN); // no key of a list
    Press(VK_RIGHT);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_EQ(g_currentNumber, 1);
    Press(VK_F24);
    EXPECT_EQ(Screen(), listSecond);
    Press(VK_F24);
    EXPECT_EQ(GetForegroundWindow(), m_window);
    Press(VK_RIGHT);
    EXPECT_EQ(g_currentNumber, 2);
    Press(VK_F24);
    EXPECT_TRUE(m_hasQuit);
}
