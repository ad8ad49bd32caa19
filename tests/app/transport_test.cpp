#include "app/main_window.h"
#include "app/play_modes.h"
#include "app/title_ticker.h"
#include "controls/seek_slider.h"
#include "library/song_list_rows.h"
#include "tests/app/player_fixture.h"

using namespace cardsong::test;

namespace {

class Transport : public PlayerTest {};

} // namespace

TEST_F(Transport, PlayWithAnEmptyListStaysStopped)
{
    Start();
    Press(VK_RETURN);
    EXPECT_EQ(g_songLoaded, 0);
    EXPECT_EQ(g_isPlaying, 0);
    EXPECT_TRUE(IsShown(kCommandPlay));
}

TEST_F(Transport, EnterPlaysTheFirstSong)
{
    Start();
    AddSong("a.mp3", 30);
    AddSong("b.mp3", 20);
    Press(VK_RETURN);
    EXPECT_EQ(g_songLoaded, 1);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_EQ(g_currentNumber, 1);
    EXPECT_EQ(Narrow(g_titleText), "01.a");
    EXPECT_EQ(Narrow(g_totalText), "0:30");
    EXPECT_TRUE(IsShown(kCommandPause));
    EXPECT_FALSE(IsShown(kCommandPlay));
    EXPECT_FALSE(IsEnabled(kCommandPrevious));
    EXPECT_TRUE(IsEnabled(kCommandNext));
    EXPECT_TRUE(IsEnabled(kCommandStop));
}

TEST_F(Transport, ATapOnThePlayKeyPlaysAndAnotherPauses)
{
    Start();
    AddSong("a.mp3", 30);
    Tap(kPlayKey);
    EXPECT_EQ(g_isPlaying, 1);
    Tap(kPlayKey);
    EXPECT_EQ(g_isPlaying, 0);
    EXPECT_EQ(g_songLoaded, 1);
    EXPECT_TRUE(IsShown(kCommandPlay));
    EXPECT_FALSE(IsShown(kCommandPause));
}

TEST_F(Transport, APausedSongGoesOnWhereItWas)
{
    Start();
    AddSong("a.mp3", 30);
    Press(VK_RETURN);
    Advance(52);
    Press(VK_RETURN);
    Advance(100);
    EXPECT_EQ(Narrow(g_elapsedText), "0:05");
    TakeSimulatedCalls();
    Press(VK_RETURN);
    EXPECT_EQ(TakeSimulatedCalls(), std::vector<std::string>{ "Run" });
    Advance(10);
    EXPECT_EQ(Narrow(g_elapsedText), "0:06");
}

TEST_F(Transport, TheLastSongDisablesNextAndTheFirstPrevious)
{
    Start();
    AddSong("a.mp3", 30);
    AddSong("b.mp3", 20);
    Press(VK_RETURN);
    Press(VK_RIGHT);
    EXPECT_EQ(g_currentNumber, 2);
    EXPECT_FALSE(IsEnabled(kCommandNext));
    EXPECT_TRUE(IsEnabled(kCommandPrevious));
    Press(VK_LEFT);
    EXPECT_EQ(g_currentNumber, 1);
    EXPECT_TRUE(IsEnabled(kCommandNext));
    EXPECT_FALSE(IsEnabled(kCommandPrevious));
}

TEST_F(Transport, TheOnlySongDisablesPreviousAtFirstAndNextOnceItIsMarked)
{
    Start();
    AddSong("a.mp3", 30);
    Press(VK_RETURN);
    EXPECT_FALSE(IsEnabled(kCommandPrevious));
    EXPECT_TRUE(IsEnabled(kCommandNext));
    Tap(kStopKey);
    Press(VK_RETURN);
    EXPECT_TRUE(IsEnabled(kCommandPrevious));
    EXPECT_FALSE(IsEnabled(kCommandNext));
}

TEST_F(Transport, StopEmptiesTheDisplayAndDisablesTheKeys)
{
    Start();
    AddSong("a.mp3", 30);
    AddSong("b.mp3", 20);
    Press(VK_RETURN);
    Advance(20);
    Tap(kStopKey);
    EXPECT_EQ(g_songLoaded, 0);
    EXPECT_EQ(g_isPlaying, 0);
    EXPECT_EQ(g_currentNumber, 0);
    EXPECT_EQ(g_titleTimer, 0U);
    EXPECT_TRUE(g_titleText.empty());
    EXPECT_EQ(Narrow(g_elapsedText), "0:00");
    EXPECT_TRUE(IsShown(kCommandPlay));
    EXPECT_TRUE(IsEnabled(kCommandPlay));
    for (const int id : { kCommandPrevious, kCommandStop, kCommandNext, kCommandShuffleOff, kCommandRepeatOff })
        EXPECT_FALSE(IsEnabled(id)) << id;
    EXPECT_FALSE(IsWindowEnabled(GetWindow(m_window, GW_CHILD)));
}

TEST_F(Transport, StopLeavesTheTitleAtRestAndTheTimeAtZeroUntilTheNextPaint)
{
    Start();
    const Frame before = Screen();
    AddSong("a.mp3", 30);
    Press(VK_RETURN);
    const Frame atRest = Screen(); // the title has just come in, at the place where it rests
    Advance(50);
    Tap(kStopKey);
    EXPECT_EQ(Differences(atRest, Screen(), { 34, 45, 318, 137 }), 0);
    InvalidateRect(m_window, nullptr, FALSE);
    Pump();
    EXPECT_EQ(Differences(before, Screen(), { 0, 0, 320, 240 }), 0);
}

TEST_F(Transport, AStoppedPlayerRepaintsNothing)
{
    Start();
    AddSong("a.mp3", 30);
    Press(VK_RETURN);
    Advance(10);
    Tap(kStopKey);
    Advance(1);
    const HDC context = GetDC(m_window);
    const RECT mark{ 40, 50, 60, 70 };
    FillRect(context, &mark, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    ReleaseDC(m_window, context);
    const Frame marked = Screen();
    Advance(5);
    EXPECT_EQ(Differences(marked, Screen(), { 0, 0, 320, 240 }), 0);
}

TEST_F(Transport, AQuietStopLeavesThePictureToTheSongThatFollows)
{
    Start();
    AddSong("a.mp3", 30);
    Press(VK_RETURN);
    Advance(20);
    const Frame playing = Screen();
    constexpr RECT panel{ 34, 45, 284, 137 };
    SendMessageW(m_window, WM_COMMAND, MAKEWPARAM(260, 1), 0);
    EXPECT_EQ(g_songLoaded, 0);
    EXPECT_EQ(Differences(playing, Screen(), panel), 0);
    SendMessageW(m_window, WM_COMMAND, 260, 0);
    EXPECT_GT(Differences(playing, Screen(), panel), 50);
}

TEST_F(Transport, TheAudioManagerIsToldOfAStopWithTheCommandsOwnWord)
{
    Start();
    AddSong("a.mp3", 30);
    Press(VK_RETURN);
    SendMessageW(m_window, WM_COMMAND, MAKEWPARAM(260, 1), 0);
    const UINT told = RegisterWindowMessageW(TEXT("TAVO_AUDIOMGR_UPDATESTATE_IND"));
    MSG message;
    ASSERT_TRUE(PeekMessageW(&message, m_window, told, told, PM_REMOVE));
    EXPECT_EQ(message.wParam, MAKEWPARAM(260, 1));
    EXPECT_EQ(message.lParam, 0);
}

TEST_F(Transport, TheSliderStandsAtTheBeginningAfterAStop)
{
    Start();
    AddSong("a.mp3", 10);
    const Frame before = Screen();
    Press(VK_RETURN);
    Advance(60);
    const RECT bar{ kSliderLeft, 139, kSliderLeft + kSliderWidthPx, 154 };
    EXPECT_GT(Differences(before, Screen(), bar), 100);
    Tap(kStopKey);
    EXPECT_EQ(Differences(before, Screen(), bar), 0);
}

TEST_F(Transport, PlayAfterStopBeginsTheMarkedSongAnew)
{
    Start();
    AddSong("a.mp3", 30);
    AddSong("b.mp3", 20);
    Press(VK_RETURN);
    Press(VK_RIGHT);
    Advance(30);
    Tap(kStopKey);
    Press(VK_RETURN);
    EXPECT_EQ(g_currentNumber, 2);
    EXPECT_EQ(Narrow(g_titleText), "02.b");
    Advance(10);
    EXPECT_EQ(Narrow(g_elapsedText), "0:01");
}

TEST_F(Transport, ThePlayerStopsAtTheEndOfASong)
{
    Start();
    AddSong("a.mp3", 3);
    AddSong("b.mp3", 20);
    Press(VK_RETURN);
    Advance(29);
    EXPECT_EQ(g_isPlaying, 1);
    Advance(2);
    EXPECT_EQ(g_isPlaying, 0);
    EXPECT_EQ(g_songLoaded, 0);
    EXPECT_TRUE(IsShown(kCommandPlay));
}

TEST_F(Transport, ASongThatBreaksOffStopsThePlayer)
{
    Start();
    AddSong("a.mp3", 30);
    Press(VK_RETURN);
    Advance(5);
    BreakCurrentSong();
    Pump();
    EXPECT_EQ(g_songLoaded, 0);
}

TEST_F(Transport, AnUnplayableSongInTheMiddleLeavesTheListAndTheNextOnePlays)
{
    Start();
    AddSong("a.mp3", 30);
    AddBadSong("bad.mp3");
    AddSong("c.mp3", 20);
    Press(VK_RETURN);
    Press(VK_RIGHT);
    ASSERT_EQ(PlayList.GetCount(), 2);
    EXPECT_EQ(g_currentNumber, 2);
    EXPECT_EQ(Narrow(g_titleText), "02.c");
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_EQ(g_songLoaded, 1);
}

TEST_F(Transport, AnUnplayableFirstSongLeavesTheListAndThePlayerWaits)
{
    Start();
    AddBadSong("bad.mp3");
    AddSong("b.mp3", 20);
    Press(VK_RETURN);
    EXPECT_EQ(PlayList.GetCount(), 1);
    EXPECT_EQ(g_isPlaying, 0);
    Press(VK_RETURN);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_EQ(Narrow(g_titleText), "01.b");
}

TEST_F(Transport, AnUnplayableLastSongSendsTheMarkToTheFirst)
{
    Start();
    AddSong("a.mp3", 30);
    AddBadSong("bad.mp3");
    Press(VK_RETURN);
    Press(VK_RIGHT);
    EXPECT_EQ(PlayList.GetCount(), 1);
    EXPECT_EQ(g_isPlaying, 0);
    EXPECT_EQ(SongList(PlayList).At(0).playMark, 1);
}

TEST_F(Transport, AListOfUnplayableSongsEmptiesItselfOneEntryPerAttempt)
{
    Start();
    for (const char* name : { "a.mp3", "b.mp3", "c.mp3" })
        AddBadSong(name);
    for (int left = 2; left >= 0; --left) {
        Press(VK_RETURN);
        EXPECT_EQ(PlayList.GetCount(), left);
        EXPECT_EQ(g_isPlaying, 0);
        EXPECT_EQ(g_songLoaded, 0);
    }
    Press(VK_RETURN);
    EXPECT_EQ(g_songLoaded, 0);
}

TEST_F(Transport, ThousandsOfUnplayableSongsInARowAreNoTrouble)
{
    Start();
    AddSong("a.mp3", 30);
    for (int i = 0; i < 3000; ++i)
        AddBadSong("bad" + std::to_string(i) + ".mp3");
    AddSong("z.mp3", 20);
    Press(VK_RETURN);
    Press(VK_RIGHT);
    EXPECT_EQ(PlayList.GetCount(), 2);
    EXPECT_EQ(Narrow(g_titleText), "02.z");
    EXPECT_EQ(g_isPlaying, 1);
}

TEST_F(Transport, ASongWhoseFileIsGoneLeavesTheList)
{
    Start();
    AddSong("a.mp3", 30);
    AddSong("gone.mp3", 30);
    AddSong("c.mp3", 30);
    std::filesystem::remove(m_device.CardDirectory() + "/gone.mp3");
    Press(VK_RETURN);
    Press(VK_RIGHT);
    EXPECT_EQ(PlayList.GetCount(), 2);
    EXPECT_EQ(Narrow(g_titleText), "02.c");
}

TEST_F(Transport, TheFirstOpeningStoresTheLengthInTheEntry)
{
    Start();
    AddSong("a.mp3", 30.5);
    Press(VK_RETURN);
    EXPECT_DOUBLE_EQ(SongList(PlayList).At(0).duration, 30.5);
}

TEST_F(Transport, AnUnknownLengthCountsAsOneSecond)
{
    Start();
    AddSong("a.mp3", 30);
    SetSimulatedSong(TEXT("\\SDMMC\\a.mp3"), { 30, false, true });
    Press(VK_RETURN);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_EQ(Narrow(g_totalText), "0:01");
}

TEST_F(Transport, AnUnknownLengthIsNotStoredAndNoRowShowsIt)
{
    Start();
    AddSong("a.mp3", 30);
    SetSimulatedSong(TEXT("\\SDMMC\\a.mp3"), { 30, false, true });
    BuildSongListRows(PlayList, false);
    Press(VK_RETURN);
    EXPECT_EQ(SongList(PlayList).At(0).duration, 0.0);
    EXPECT_EQ(Narrow(PlayListRows()[0].secondaryText), "--:--");
}

TEST_F(Transport, ASongOfExactlyOneSecondIsStored)
{
    Start();
    AddSong("a.mp3", 1);
    Press(VK_RETURN);
    EXPECT_EQ(SongList(PlayList).At(0).duration, 1.0);
}

TEST_F(Transport, ASongThatThisMachineCannotPlayEndsAfterItsOneSecondAndStays)
{
    Start();
    AddSongWithoutDecoder("a.wma");
    AddSong("b.mp3", 20);
    Press(VK_RETURN);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_EQ(Narrow(g_titleText), "01.a");
    Advance(9);
    EXPECT_EQ(g_isPlaying, 1);
    Advance(2);
    EXPECT_EQ(g_isPlaying, 0);
    EXPECT_EQ(g_songLoaded, 0);
    ASSERT_EQ(PlayList.GetCount(), 2);
    EXPECT_EQ(SongList(PlayList).At(0).duration, 0.0);
}

TEST_F(Transport, SteppingThroughSongsThatThisMachineCannotPlayKeepsThemAll)
{
    Start();
    for (const char* name : { "a.wma", "b.wma", "c.wma" })
        AddSongWithoutDecoder(name);
    Press(VK_RETURN);
    Press(VK_RIGHT);
    Press(VK_RIGHT);
    EXPECT_EQ(PlayList.GetCount(), 3);
    EXPECT_EQ(g_currentNumber, 3);
    EXPECT_EQ(g_isPlaying, 1);
    SendMessageW(m_window, WM_COMMAND, kCommandExit, 0);
    EXPECT_EQ(m_device.ReadFile("user/Windows/play_list.txt").size(), 3 * (2 * std::size("1$a.wma$\\SDMMC$0") - 2 + 2));
}

TEST_F(Transport, ATapOnTheSliderSeeksToThatPart)
{
    Start();
    AddSong("a.mp3", 40);
    Press(VK_RETURN);
    Tap({ kSliderLeft + kSliderWidthPx / 2, kSliderMiddleY });
    Advance(1);
    EXPECT_EQ(Narrow(g_elapsedText), "0:20");
}

TEST_F(Transport, ATapOnTheSliderOfAStoppedPlayerDoesNothing)
{
    Start();
    AddSong("a.mp3", 40);
    Tap({ kSliderLeft + kSliderWidthPx / 2, kSliderMiddleY });
    TakeSimulatedCalls();
    Advance(5);
    EXPECT_TRUE(TakeSimulatedCalls().empty());
    EXPECT_EQ(g_songLoaded, 0);
}

TEST_F(Transport, TheSliderHas400Steps)
{
    Start();
    AddSong("a.mp3", 4000);
    Press(VK_RETURN);
    TakeSimulatedCalls();
    SendMessageW(m_window, 1135, 300, 100);
    EXPECT_EQ(TakeSimulatedCalls(), std::vector<std::string>{ "SetPosition 1000.0" });
}

TEST_F(Transport, SeekRequestsOfOtherControlsAreIgnored)
{
    Start();
    AddSong("a.mp3", 40);
    Press(VK_RETURN);
    SendMessageW(m_window, kSliderMovedMessage, kSeekSliderId + 1, 200);
    Advance(1);
    EXPECT_EQ(Narrow(g_elapsedText), "0:00");
}

TEST_F(Transport, ForwardAndBackMoveFiveSeconds)
{
    Start();
    AddSong("a.mp3", 40);
    Press(VK_RETURN);
    SendMessageW(m_window, WM_COMMAND, kCommandForward5, 0);
    SendMessageW(m_window, WM_COMMAND, kCommandForward5, 0);
    SendMessageW(m_window, WM_COMMAND, kCommandBack5, 0);
    Advance(1);
    EXPECT_EQ(Narrow(g_elapsedText), "0:05");
}

TEST_F(Transport, GoingOnAfterAPauseKeepsTheTitlesBeat)
{
    Start();
    AddSong("a.mp3", 40);
    Press(VK_RETURN);
    Advance(3);
    m_clock.Advance(60);
    Pump();
    Press(VK_RETURN);
    Press(VK_RETURN);
    const LONG left = g_titleStripA.rect.left;
    m_clock.Advance(40);
    Pump();
    EXPECT_LT(g_titleStripA.rect.left, left);
}

TEST_F(Transport, TheBarFillsAsTheSongPlays)
{
    Start();
    AddSong("a.mp3", 10);
    Press(VK_RETURN);
    const Frame before = Screen();
    Advance(50);
    const Frame after = Screen();
    const RECT played{ kSliderLeft + 20, kSliderMiddleY, kSliderLeft + 120, kSliderMiddleY + 1 };
    const RECT rest{ kSliderLeft + 180, kSliderMiddleY, kSliderLeft + 260, kSliderMiddleY + 1 };
    EXPECT_EQ(Differences(before, after, played), 100);
    EXPECT_EQ(Differences(before, after, rest), 0);
}

TEST_F(Transport, ElapsedTimeStandsStillWhilePaused)
{
    Start();
    AddSong("a.mp3", 40);
    Press(VK_RETURN);
    Advance(31);
    Press(VK_RETURN);
    Advance(50);
    EXPECT_EQ(Narrow(g_elapsedText), "0:03");
}

TEST_F(Transport, AnEmptyListIsFilledFromTheCardWhenTheStartAskedForIt)
{
    g_launchOptions.fillFromCard = true;
    m_device.WriteFile("card/Music/One.MP3", "x");
    m_device.WriteFile("card/maps/two.mp3", "x");
    Start();
    Press(VK_RETURN);
    ASSERT_EQ(PlayList.GetCount(), 1);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_EQ(Narrow(g_titleText), "01.one");
}

TEST_F(Transport, PlaysAtOnceWhenTheStartAskedForIt)
{
    AddSong("a.mp3", 30);
    Start();
    EXPECT_EQ(g_isPlaying, 0);
    g_launchOptions.playAtOnce = true;
    StartAgain();
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_EQ(Narrow(g_titleText), "01.a");
}

TEST_F(Transport, AnEmptyCardDoesNotFillAnything)
{
    g_launchOptions.fillFromCard = true;
    Start();
    Press(VK_RETURN);
    EXPECT_EQ(g_songLoaded, 0);
    EXPECT_EQ(g_isPlaying, 0);
}

TEST_F(Transport, ACardOfUnplayableFilesIsOfferedAgainOnlyAtTheNextPlay)
{
    g_launchOptions.fillFromCard = true;
    m_device.WriteFile("card/bad.mp3", "x");
    SetSimulatedSong(TEXT("\\SDMMC\\bad.mp3"), { 0, true, false });
    Start();
    Press(VK_RETURN);
    EXPECT_EQ(PlayList.GetCount(), 0);
    EXPECT_EQ(g_songLoaded, 0);
}

TEST_F(Transport, PlayGoesOnWithThePausedSongAlsoWhenAnotherRowIsMarked)
{
    Start();
    AddSong("a.mp3", 30);
    AddSong("b.mp3", 20);
    Press(VK_RETURN);
    Advance(52);
    Press(VK_RETURN);
    SongList(PlayList).At(0).playMark = 0;
    SongList(PlayList).At(1).playMark = 2;
    TakeSimulatedCalls();
    Press(VK_RETURN);
    EXPECT_EQ(TakeSimulatedCalls(), std::vector<std::string>{ "Run" });
    EXPECT_EQ(g_currentNumber, 1);
    EXPECT_EQ(SongList(PlayList).At(0).playMark, 1);
    EXPECT_EQ(SongList(PlayList).At(1).playMark, 0);
}

TEST_F(Transport, PlayGoesOnWithThePausedSongAlsoWhenNoRowIsMarked)
{
    Start();
    AddSong("a.mp3", 30);
    AddSong("b.mp3", 20);
    Press(VK_RETURN);
    Press(VK_RIGHT);
    Press(VK_RETURN);
    SongList(PlayList).At(1).playMark = 0;
    Press(VK_RETURN);
    EXPECT_EQ(g_currentNumber, 2);
    EXPECT_EQ(SongList(PlayList).At(1).playMark, 2);
    EXPECT_EQ(Narrow(g_titleText), "02.b");
}

TEST_F(Transport, BehindAnUnplayableLastSongRepeatAllPlaysTheFirst)
{
    Start();
    AddSong("a.mp3", 30);
    AddBadSong("bad.mp3");
    SongList(PlayList).At(1).playMark = 2;
    g_playModes.SetRepeat(Repeat::All);
    Press(VK_RETURN);
    EXPECT_EQ(PlayList.GetCount(), 1);
    EXPECT_EQ(g_currentNumber, 1);
    EXPECT_EQ(g_isPlaying, 1);
    g_playModes = {};
}

TEST_F(Transport, BehindAnUnplayableLastSongShufflePlaysTheFirst)
{
    Start();
    AddSong("a.mp3", 30);
    AddBadSong("bad.mp3");
    SongList(PlayList).At(1).playMark = 2;
    g_shuffle = 1;
    Press(VK_RETURN);
    EXPECT_EQ(PlayList.GetCount(), 1);
    EXPECT_EQ(g_currentNumber, 1);
    EXPECT_EQ(g_isPlaying, 1);
    g_playModes = {};
}
