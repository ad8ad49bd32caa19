#include "app/title_ticker.h"
#include "tests/app/list_windows_fixture.h"

using namespace cardsong::test;

namespace {

class PlayListEdits : public ListWindowsTest {
protected:
    // Songs a to e, of which the numbered one plays.
    void PlayOneOfFive(int number)
    {
        AddSongs({ "a.mp3", "b.mp3", "c.mp3", "d.mp3", "e.mp3" });
        MakeCurrent(number);
        Press(VK_RETURN);
        ASSERT_EQ(g_currentNumber, number);
        OpenPlayList();
    }
    void Mark(int number)
    {
        Notify(50, number - 1);
        ASSERT_EQ(Marks()[static_cast<std::size_t>(number - 1)], number);
    }
};

} // namespace

// ---- removing the marked song ----

TEST_F(PlayListEdits, RemovingASongBeforeTheCurrentOneKeepsItCurrentAndPlaying)
{
    PlayOneOfFive(3);
    Advance(20);
    Mark(2);
    Tap(kDropKey);
    EXPECT_EQ(NamesOf(PlayList), (Texts{ "a.mp3", "c.mp3", "d.mp3", "e.mp3" }));
    EXPECT_EQ(g_currentNumber, 2);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_EQ(Marks(), (Numbers{ 0, 2, 0, 0 }));
    Advance(10);
    EXPECT_EQ(Narrow(g_elapsedText), "0:03");
    Send(kCommandNext);
    EXPECT_EQ(Narrow(g_titleText), "03.d");
}

TEST_F(PlayListEdits, RemovingTheCurrentSongStops)
{
    PlayOneOfFive(3);
    Tap(kDropKey); // it is the marked one
    EXPECT_EQ(NamesOf(PlayList), (Texts{ "a.mp3", "b.mp3", "d.mp3", "e.mp3" }));
    EXPECT_EQ(g_currentNumber, 0);
    EXPECT_EQ(g_songLoaded, 0);
    EXPECT_EQ(g_isPlaying, 0);
    EXPECT_EQ(Narrow(g_titleText), "");
    EXPECT_EQ(Marks(), (Numbers{ 0, 0, 3, 0 }));
    Tap(kPlayMarkedKey);
    EXPECT_EQ(Narrow(g_titleText), "03.d");
}

TEST_F(PlayListEdits, RemovingThePausedCurrentSongStops)
{
    PlayOneOfFive(1);
    Send(kCommandPause);
    Tap(kDropKey);
    EXPECT_EQ(g_songLoaded, 0);
    EXPECT_EQ(g_currentNumber, 0);
    EXPECT_EQ(Marks(), (Numbers{ 1, 0, 0, 0 }));
}

TEST_F(PlayListEdits, RemovingASongBehindTheCurrentOneLeavesItAlone)
{
    PlayOneOfFive(3);
    Mark(4);
    Tap(kDropKey);
    EXPECT_EQ(NamesOf(PlayList), (Texts{ "a.mp3", "b.mp3", "c.mp3", "e.mp3" }));
    EXPECT_EQ(g_currentNumber, 3);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_EQ(Marks(), (Numbers{ 0, 0, 0, 4 }));
}

TEST_F(PlayListEdits, RemovingTheLastSongLeavesNoneMarked)
{
    PlayOneOfFive(1);
    Mark(5);
    Tap(kDropKey);
    EXPECT_EQ(Marks(), (Numbers{ 0, 0, 0, 0 }));
    EXPECT_EQ(g_currentNumber, 1);
    EXPECT_EQ(HighlightedRows(), Numbers{});
    Tap(kDropKey);
    EXPECT_EQ(PlayList.GetCount(), 4);
}

TEST_F(PlayListEdits, RemovingWithoutAMarkDoesNothing)
{
    AddSongs({ "a.mp3", "b.mp3" });
    OpenPlayList();
    Tap(kDropKey);
    EXPECT_EQ(PlayList.GetCount(), 2);
}

TEST_F(PlayListEdits, RemovingWhileNothingIsLoadedLeavesTheNumberAlone)
{
    AddSongs({ "a.mp3", "b.mp3" });
    OpenPlayList();
    Mark(1);
    g_currentNumber = 2; // left behind
    Tap(kDropKey);
    EXPECT_EQ(g_currentNumber, 2);
    EXPECT_EQ(NamesOf(PlayList), (Texts{ "b.mp3" }));
}

TEST_F(PlayListEdits, RemovingShowsTheRowsUnderTheirNewNumbers)
{
    AddSongs({ "a.mp3", "b.mp3", "c.mp3", "d.mp3", "e.mp3" });
    OpenPlayList();
    Tap(RowPlace(1));
    Tap(kDropKey);
    EXPECT_EQ(LabelsOf(PlayListRows()), (Texts{ "1 a.mp3", "2 c.mp3", "3 d.mp3", "4 e.mp3" }));
    EXPECT_EQ(HighlightedRows(), (Numbers{ 1 }));
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(PlayListWindow(), 41))); // one page is left
    EXPECT_EQ(Screen(), PlayListOpenedAnew());
}

TEST_F(PlayListEdits, RemovingAllSongsOneByOneEmptiesTheWindow)
{
    OpenPlayList();
    const Frame empty = Screen();
    Press(VK_F24);
    PlayOneOfFive(5);
    for (int left = 5; left > 0; --left) {
        Mark(left);
        Tap(kDropKey);
        ASSERT_EQ(PlayList.GetCount(), left - 1);
    }
    EXPECT_EQ(g_songLoaded, 0);
    EXPECT_EQ(Screen(), empty);
    Tap(kDropKey);
    EXPECT_TRUE(PlayList.IsEmpty());
}

TEST_F(PlayListEdits, RemovingTheLastSongOfAPageGoesBackToThePageBefore)
{
    AddSongs({ "a.mp3", "b.mp3", "c.mp3", "d.mp3", "e.mp3" });
    OpenPlayList();
    const Frame first = Screen();
    Tap(kScrollDownKey);
    Tap(RowPlace(0));
    Tap(kDropKey);
    EXPECT_EQ(PlayList.GetCount(), 4);
    constexpr RECT rows{ 0, 27, 258, 208 };
    EXPECT_EQ(Differences(first, Screen(), rows), 0);
}

TEST_F(PlayListEdits, ARemovedSongStaysOnTheCardAndIsOfferedAgain)
{
    AddSongs({ "a.mp3", "b.mp3" });
    OpenPlayList();
    Mark(1);
    Tap(kDropKey);
    Tap(kSongsKey);
    EXPECT_EQ(NamesOf(CardSongList), (Texts{ "a.mp3" }));
}

// ---- clearing ----

TEST_F(PlayListEdits, ClearingStopsAndEmptiesTheListAndTheWindow)
{
    OpenPlayList();
    const Frame empty = Screen();
    Press(VK_F24);
    PlayOneOfFive(4);
    Tap(kClearKey);
    EXPECT_TRUE(PlayList.IsEmpty());
    EXPECT_EQ(g_songLoaded, 0);
    EXPECT_EQ(g_isPlaying, 0);
    EXPECT_EQ(g_currentNumber, 0);
    EXPECT_NE(PlayListWindow(), nullptr);
    EXPECT_EQ(Screen(), empty);
    Tap(kPlayMarkedKey);
    EXPECT_NE(PlayListWindow(), nullptr);
    EXPECT_EQ(g_songLoaded, 0);
}

TEST_F(PlayListEdits, AClearedListIsSavedEmpty)
{
    PlayOneOfFive(1);
    Tap(kClearKey);
    Tap(kListBackKey);
    Press(VK_F24);
    EXPECT_TRUE(m_hasQuit);
    EXPECT_EQ(m_device.ReadFile("user/Windows/play_list.txt"), "");
}

// ---- taking songs in ----

TEST_F(PlayListEdits, TheWholeCardJoinsBehindTheSongsThatAreThere)
{
    AddSongs({ "m.mp3" });
    PutOnCard({ "z.mp3", "a.mp3", "deep/m.mp3", "deep/n.mp3" });
    OpenPlayList();
    Tap(kAllKey);
    EXPECT_EQ(NamesOf(PlayList), (Texts{ "m.mp3", "a.mp3", "n.mp3", "z.mp3" }));
    EXPECT_EQ(LabelsOf(PlayListRows()), (Texts{ "1 m.mp3", "2 a.mp3", "3 n.mp3", "4 z.mp3" }));
    EXPECT_EQ(Screen(), PlayListOpenedAnew());
    Tap(kAllKey);
    EXPECT_EQ(PlayList.GetCount(), 4);
}

TEST_F(PlayListEdits, TheWholeCardIsScannedBeforeTheLibraryJoins)
{
    AddSongs({ "m.mp3" });
    PutOnCard({ "b.mp3", "c.mp3" });
    OpenLibrary(); // it holds b and c from now on
    Press(VK_F24);
    PutOnCard({ "a.mp3", "d.mp3" });
    Tap(kAllKey);
    EXPECT_EQ(NamesOf(PlayList), (Texts{ "m.mp3", "a.mp3", "d.mp3", "b.mp3", "c.mp3" }));
    EXPECT_TRUE(CardSongList.IsEmpty());
}

TEST_F(PlayListEdits, TheWholeCardJoinsWhileASongPlays)
{
    PlayOneOfFive(2);
    PutOnCard({ "f.mp3" });
    Tap(kAllKey);
    EXPECT_EQ(PlayList.GetCount(), 6);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_EQ(g_currentNumber, 2);
    EXPECT_EQ(Marks(), (Numbers{ 0, 2, 0, 0, 0, 0 }));
}

TEST_F(PlayListEdits, AMissingCardTakesNothingOutAndBringsNothing)
{
    PlayOneOfFive(1);
    std::filesystem::rename(m_device.CardDirectory(), m_device.CardDirectory() + ".away");
    Tap(kAllKey);
    EXPECT_EQ(PlayList.GetCount(), 5);
    Tap(kSongsKey);
    EXPECT_TRUE(CardSongList.IsEmpty());
    Tap(kDoneKey);
    EXPECT_EQ(PlayList.GetCount(), 5);
    EXPECT_EQ(LabelsOf(PlayListRows()).size(), 5U);
}

// The saved list of a card that was away when the player started.
class SavedListAway : public ListWindowsTest {
protected:
    void SetUp() override
    {
        PlayerTest::SetUp();
        std::string bytes;
        for (const char letter : std::string("1$c.mp3$\\SDMMC$10")) {
            bytes += letter;
            bytes += '\0';
        }
        bytes += "\r\n";
        m_device.WriteFile("user/Windows/play_list.txt", bytes);
        Start();
        ASSERT_TRUE(PlayList.IsEmpty());
    }
};

TEST_F(SavedListAway, ComesBeforeTheWholeCardWhenItIsBack)
{
    PutOnCard({ "a.mp3", "b.mp3", "c.mp3" });
    OpenPlayList();
    EXPECT_EQ(NamesOf(PlayList), (Texts{ "c.mp3" }));
    Tap(kAllKey);
    EXPECT_EQ(NamesOf(PlayList), (Texts{ "c.mp3", "a.mp3", "b.mp3" }));
}

TEST_F(SavedListAway, LeadsTheWholeCardThatIsAskedFor)
{
    PutOnCard({ "a.mp3", "b.mp3", "c.mp3" });
    Send(31);
    EXPECT_EQ(NamesOf(PlayList), (Texts{ "c.mp3", "a.mp3", "b.mp3" }));
}

TEST_F(SavedListAway, TakesItsSongsOutOfTheLibrary)
{
    PutOnCard({ "a.mp3", "c.mp3" });
    Send(25); // while the play list is still empty
    ASSERT_EQ(NamesOf(CardSongList), (Texts{ "a.mp3", "c.mp3" }));
    Press(VK_F24);
    OpenPlayList();
    ASSERT_EQ(NamesOf(PlayList), (Texts{ "c.mp3" }));
    Tap(kSongsKey);
    EXPECT_EQ(NamesOf(CardSongList), (Texts{ "a.mp3" }));
    EXPECT_EQ(LabelsOf(CardSongRows()), (Texts{ "1 a.mp3" }));
}
