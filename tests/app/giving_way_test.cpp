#include "app/giving_way.h"

#include "app/audio_manager.h"
#include "app/audio_priority.h"
#include "app/interruption.h"
#include "app/lyrics_display.h"
#include "app/play_modes.h"
#include "tests/app/player_fixture.h"

using namespace cardsong::test;

namespace {

class GivingWay : public PlayerTest {
protected:
    void SetUp() override
    {
        PlayerTest::SetUp();
        Start();
        AddSong("a.mp3", 40);
        AddSong("b.mp3", 30);
        Press(VK_RETURN);
        Advance(100);
    }
    void TearDown() override
    {
        g_interruption = {};
        PlayerTest::TearDown();
    }
    void TellState(WORD state)
    {
        PostMessageW(HWND_BROADCAST, g_msgAudioManager, MAKEWPARAM(0, state), 0);
        Pump();
    }
    // Another program of the machine comes to the front, and goes again.
    void LeaveForeground()
    {
        cardsong::user::SetDisplayActive(false);
        Pump();
    }
    void ComeBack()
    {
        cardsong::user::SetDisplayActive(true);
        Pump();
    }
    void TellThatAnotherWindowIsActive(HWND other)
    {
        SendMessageW(m_window, WM_ACTIVATE, WA_INACTIVE, reinterpret_cast<LPARAM>(other));
    }
};

} // namespace

TEST_F(GivingWay, AnotherUserOfTheSoundPausesAndItsEndGoesOnWhereTheSongWas)
{
    TellState(2);
    EXPECT_EQ(g_isPlaying, 0);
    EXPECT_EQ(g_songLoaded, 1);
    EXPECT_TRUE(IsInterrupted());
    EXPECT_NEAR(g_savedPosition, 10.0, 0.001);
    EXPECT_TRUE(IsShown(kCommandPlay));
    Advance(50);
    EXPECT_EQ(Narrow(g_elapsedText), "0:10");
    TakeSimulatedCalls();
    TellState(1);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_FALSE(IsInterrupted());
    EXPECT_EQ(g_savedPosition, 0);
    EXPECT_EQ(TakeSimulatedCalls(), (std::vector<std::string>{ "SetPosition 10.0", "Run" }));
    Advance(10);
    EXPECT_EQ(Narrow(g_elapsedText), "0:11");
}

TEST_F(GivingWay, TheStateIsReadFromTheHighWordOnly)
{
    PostMessageW(HWND_BROADCAST, g_msgAudioManager, MAKEWPARAM(0xFFFF, 1), 0);
    Pump();
    EXPECT_EQ(g_isPlaying, 1);
    PostMessageW(HWND_BROADCAST, g_msgAudioManager, MAKEWPARAM(0, 0xFFFF), 0);
    Pump();
    EXPECT_EQ(g_isPlaying, 0);
}

TEST_F(GivingWay, State0GoesOnToo)
{
    TellState(3);
    TellState(0);
    EXPECT_EQ(g_isPlaying, 1);
}

TEST_F(GivingWay, ASongThatTheUserPausedIsNotWoken)
{
    Press(VK_RETURN);
    TellState(2);
    EXPECT_FALSE(IsInterrupted());
    TellState(1);
    EXPECT_EQ(g_isPlaying, 0);
}

TEST_F(GivingWay, TheUserMayGoOnDuringAnInterruption)
{
    TellState(2);
    Press(VK_RETURN);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_FALSE(IsInterrupted());
    Press(VK_RETURN);
    TellState(1);
    EXPECT_EQ(g_isPlaying, 0); // that pause was the user's own
}

TEST_F(GivingWay, StopEndsAnInterruption)
{
    TellState(2);
    SendMessageW(m_window, WM_COMMAND, kCommandStop, 0);
    Pump(); // its own notice has state 0
    EXPECT_EQ(g_songLoaded, 0);
    EXPECT_EQ(g_isPlaying, 0);
    TellState(1);
    EXPECT_EQ(g_isPlaying, 0);
}

TEST_F(GivingWay, TheNoticeOfAnEarlierStopDoesNotWakeALaterInterruption)
{
    SendMessageW(m_window, WM_COMMAND, kCommandStop, 0);
    SendMessageW(m_window, WM_COMMAND, kCommandPlay, 0);
    SendMessageW(m_window, g_msgAudioManager, MAKEWPARAM(0, 2), 0); // before the notice is read
    EXPECT_TRUE(IsInterrupted());
    Pump();
    EXPECT_EQ(g_isPlaying, 0);
    EXPECT_TRUE(IsInterrupted());
    PostMessageW(HWND_BROADCAST, g_msgAudioManager, kCommandStop, 0); // the same words from another program
    Pump();
    EXPECT_EQ(g_isPlaying, 1);
}

TEST_F(GivingWay, NextDuringAnInterruptionOpensTheNextSongPaused)
{
    TellState(2);
    Press(VK_RIGHT);
    Pump();
    EXPECT_EQ(g_currentNumber, 2);
    EXPECT_EQ(g_isPlaying, 0);
    EXPECT_FALSE(IsInterrupted());
    Advance(5);
    EXPECT_EQ(Narrow(g_elapsedText), "0:00");
}

TEST_F(GivingWay, WithoutAPriorityTheLossOfTheForegroundPausesNothing)
{
    LeaveForeground();
    EXPECT_EQ(g_isPlaying, 1);
    WriteAudioPriority(1);
    LeaveForeground();
    EXPECT_EQ(g_isPlaying, 1);
}

TEST_F(GivingWay, FromPriority2OnTheLossOfTheForegroundPauses)
{
    WriteAudioPriority(2);
    EXPECT_EQ(g_audioPriority, 0U); // the fresh value is asked, not the one of the window's creation
    LeaveForeground();
    EXPECT_EQ(g_isPlaying, 0);
    EXPECT_TRUE(IsInterrupted());
    EXPECT_NEAR(g_savedPosition, 10.0, 0.001);
    ComeBack();
    EXPECT_EQ(g_isPlaying, 0); // the priority still asks for it
    LeaveForeground();
    WriteAudioPriority(1);
    ComeBack();
    EXPECT_EQ(g_isPlaying, 1);
    Advance(10);
    EXPECT_EQ(Narrow(g_elapsedText), "0:11");
}

TEST_F(GivingWay, AClickIntoTheWindowIsNoReturnOfTheForeground)
{
    WriteAudioPriority(2);
    LeaveForeground();
    WriteAudioPriority(0);
    SendMessageW(m_window, WM_ACTIVATE, WA_CLICKACTIVE, 0);
    EXPECT_EQ(g_isPlaying, 0);
    ComeBack();
    EXPECT_EQ(g_isPlaying, 1);
}

TEST_F(GivingWay, AWindowOfThePlayersOwnIsNoLossOfTheForeground)
{
    WriteAudioPriority(2);
    const HWND own = CreateWindowExW(0, TEXT("static"), TEXT("own"), WS_POPUP | WS_VISIBLE, 0, 0, 320, 240, m_window,
                                     nullptr, g_hInstance, nullptr);
    SetActiveWindow(own);
    Pump();
    EXPECT_EQ(g_isPlaying, 1);
    TellThatAnotherWindowIsActive(own);
    TellThatAnotherWindowIsActive(nullptr); // the system may tell nothing of the other one
    EXPECT_EQ(g_isPlaying, 1);
    DestroyWindow(own);
    Pump();
    EXPECT_EQ(g_isPlaying, 1);
}

TEST_F(GivingWay, AnOwnWindowThatGoesWakesNoPlayerThatAnotherSoundPaused)
{
    const HWND own = CreateWindowExW(0, TEXT("static"), TEXT("own"), WS_POPUP | WS_VISIBLE, 0, 0, 320, 240, m_window,
                                     nullptr, g_hInstance, nullptr);
    SetActiveWindow(own);
    TellState(2);
    DestroyWindow(own);
    Pump();
    EXPECT_EQ(GetActiveWindow(), m_window);
    EXPECT_EQ(g_isPlaying, 0);
    EXPECT_TRUE(IsInterrupted());
}

TEST_F(GivingWay, APlayerThatGoesOnByItselfHasTheFocusAsBefore)
{
    LeaveForeground();
    ComeBack();
    Press(VK_RETURN);
    EXPECT_EQ(g_isPlaying, 0);
}

TEST_F(GivingWay, ThePriorityIsWrittenBackByStopWhenItIsBelow5)
{
    WriteAudioPriority(7);
    g_audioPriority = 4;
    SendMessageW(m_window, WM_COMMAND, kCommandStop, 0);
    DWORD priority = 99;
    ReadAudioPriority(priority);
    EXPECT_EQ(priority, 4U);
    WriteAudioPriority(2);
    g_audioPriority = 5;
    SendMessageW(m_window, WM_COMMAND, kCommandStop, 0);
    ReadAudioPriority(priority);
    EXPECT_EQ(priority, 2U);
    g_audioPriority = 0;
}

TEST_F(GivingWay, ThePriorityIsReadAtTheWindowsCreationAndWrittenBackAtItsEnd)
{
    SendMessageW(m_window, WM_COMMAND, kCommandStop, 0);
    WriteAudioPriority(3);
    g_audioPriority = 7; // is not written back
    StartAgain();
    EXPECT_EQ(g_audioPriority, 3U);
    WriteAudioPriority(1);
    SendMessageW(m_window, WM_COMMAND, kCommandExit, 0);
    DWORD priority = 99;
    ReadAudioPriority(priority);
    EXPECT_EQ(priority, 3U);
    g_audioPriority = 0;
}

TEST_F(GivingWay, APriorityOf7IsUsedAndNeverWrittenBack)
{
    SendMessageW(m_window, WM_COMMAND, kCommandStop, 0);
    WriteAudioPriority(7);
    g_audioPriority = 7;
    StartAgain();
    EXPECT_EQ(g_audioPriority, 7U);
    WriteAudioPriority(6);
    SendMessageW(m_window, WM_COMMAND, kCommandStop, 0);
    SendMessageW(m_window, WM_COMMAND, kCommandExit, 0);
    DWORD priority = 99;
    ReadAudioPriority(priority);
    EXPECT_EQ(priority, 6U);
    g_audioPriority = 0;
}
