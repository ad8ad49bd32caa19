// What the engine's threads report, and when it reaches the window.
#include "playback/media_graph_gstreamer_events.h"

#include "playback/media_graph.h"
#include "tests/playback/notice_window.h"

#include <gtest/gtest.h>

#include <vector>

using cardsong::playback::CueResult;
using cardsong::playback::GraphEvents;
using cardsong::test::NoticeWindow;

namespace {

constexpr std::chrono::milliseconds kNoTime{ 0 };
constexpr std::chrono::milliseconds kForEver{ 60000 };

std::vector<long> TakeAll(GraphEvents& events)
{
    std::vector<long> codes;
    for (long code = 0; events.Take(code);)
        codes.push_back(code);
    return codes;
}

// The states that a window hears as from the device's audio manager.
class StateWindow {
public:
    StateWindow()
    {
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = Hear;
        windowClass.lpszClassName = TEXT("StateWindow");
        RegisterClassW(&windowClass);
        m_window = CreateWindowExW(0, TEXT("StateWindow"), nullptr, WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr,
                                   nullptr);
        s_states.clear();
    }
    ~StateWindow()
    {
        DestroyWindow(m_window);
        UnregisterClassW(TEXT("StateWindow"), nullptr);
    }
    StateWindow(const StateWindow&) = delete;
    StateWindow& operator=(const StateWindow&) = delete;
    HWND Handle() const { return m_window; }
    static std::vector<WPARAM> Heard()
    {
        for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);)
            DispatchMessageW(&message);
        return s_states;
    }

private:
    static LRESULT CALLBACK Hear(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == RegisterWindowMessageW(TEXT("TAVO_AUDIOMGR_UPDATESTATE_IND")))
            s_states.push_back(wParam);
        return DefWindowProcW(window, message, wParam, lParam);
    }
    static inline std::vector<WPARAM> s_states;
    HWND m_window = nullptr;
};

TEST(GraphEvents, WhatTheSoundServerAsksIsPostedToTheWindowAsTheAudioManagersState)
{
    const StateWindow window;
    GraphEvents events;
    events.SetWindow(window.Handle());
    events.OnSoundServerAsks(kAnotherSounds);
    events.OnSoundServerAsks(kSongMaySound);
    EXPECT_EQ(StateWindow::Heard(), (std::vector<WPARAM>{ 0x20000, 0x10000 }));
    EXPECT_TRUE(TakeAll(events).empty());
}

TEST(GraphEvents, WhatTheSoundServerAskedLastBeforeThereWasAWindowIsPostedOnceThereIs)
{
    const StateWindow window;
    GraphEvents events;
    events.OnSoundServerAsks(kAnotherSounds);
    events.OnSoundServerAsks(kSongMaySound);
    events.OnSoundServerAsks(kAnotherSounds);
    EXPECT_TRUE(StateWindow::Heard().empty());
    events.SetWindow(window.Handle());
    events.SetWindow(window.Handle());
    EXPECT_EQ(StateWindow::Heard(), std::vector<WPARAM>{ 0x20000 });
}

TEST(GraphEvents, WhatTheSoundServerAskedOfASongThatIsGoneIsForgotten)
{
    const StateWindow window;
    GraphEvents events;
    events.OnSoundServerAsks(kAnotherSounds);
    events.Forget();
    events.SetWindow(window.Handle());
    EXPECT_TRUE(StateWindow::Heard().empty());
}

TEST(GraphEvents, EndIsReportedOnce)
{
    GraphEvents events;
    events.SetRunning(true);
    events.OnEnd(events.Play());
    events.OnEnd(events.Play());
    EXPECT_EQ(TakeAll(events), std::vector<long>{ kGraphComplete });
}

TEST(GraphEvents, EndAfterASeekIsReportedAgain)
{
    GraphEvents events;
    events.SetRunning(true);
    events.OnEnd(events.Play());
    events.ExpectCueAfterSeek();
    events.OnEnd(events.Play());
    EXPECT_EQ(TakeAll(events), (std::vector<long>{ kGraphComplete, kGraphComplete }));
}

TEST(GraphEvents, EndOfAPlayThatASeekEndedIsNotReported)
{
    GraphEvents events;
    const unsigned before = events.Play();
    events.ExpectCueAfterSeek();
    events.OnEnd(before);
    EXPECT_TRUE(TakeAll(events).empty());
}

TEST(GraphEvents, ForgottenEndIsNotReportedLater)
{
    GraphEvents events;
    const unsigned before = events.Play();
    events.Forget();
    events.OnEnd(before);
    EXPECT_TRUE(TakeAll(events).empty());
}

TEST(GraphEvents, BreakWhileRunningIsAnErrorAndThenTheEnd)
{
    GraphEvents events;
    events.SetRunning(true);
    events.OnError();
    events.OnError();
    EXPECT_EQ(TakeAll(events), (std::vector<long>{ kGraphErrorAbort, kGraphComplete }));
}

TEST(GraphEvents, BreakWhilePausedWaitsUntilTheSongRuns)
{
    GraphEvents events;
    events.SetRunning(false);
    events.OnError();
    EXPECT_TRUE(TakeAll(events).empty());
    events.SetRunning(true);
    EXPECT_EQ(TakeAll(events), (std::vector<long>{ kGraphErrorAbort, kGraphComplete }));
}

TEST(GraphEvents, EndOfABrokenSongIsNotReportedAgain)
{
    GraphEvents events;
    events.SetRunning(true);
    events.OnError();
    TakeAll(events);
    events.OnEnd(events.Play());
    EXPECT_TRUE(TakeAll(events).empty());
}

TEST(GraphEvents, CueIsAwaitedUntilItIsReadyOrFails)
{
    GraphEvents events;
    events.ExpectCue(1);
    EXPECT_EQ(events.AwaitCue({ kNoTime, kNoTime }), CueResult::Late);
    events.OnCued();
    EXPECT_EQ(events.AwaitCue(), CueResult::Ready);
    events.OnError();
    EXPECT_EQ(events.AwaitCue(), CueResult::Failed);
}

TEST(GraphEvents, CueOfTwoStepsIsReadyAfterTheSecond)
{
    GraphEvents events;
    events.ExpectCue(2);
    EXPECT_FALSE(events.AwaitLastStep(kNoTime));
    events.OnCued();
    EXPECT_TRUE(events.AwaitLastStep(kNoTime));
    EXPECT_TRUE(events.IsCueing());
    events.OnCued();
    EXPECT_FALSE(events.IsCueing());
}

TEST(GraphEvents, LastStepOfABrokenSongNeverComes)
{
    GraphEvents events;
    events.ExpectCue(2);
    events.OnError();
    EXPECT_FALSE(events.AwaitLastStep(kForEver));
}

TEST(GraphEvents, ServerThatHangsIsWaitedForNoLongerThanItsOwnLimit)
{
    GraphEvents events;
    events.ExpectCue(1);
    events.OnWaitForServer();
    EXPECT_EQ(events.AwaitCue({ kForEver, kNoTime }), CueResult::Late);
}

TEST(GraphEvents, SongItselfIsWaitedForAgainOnceTheServerAnswered)
{
    GraphEvents events;
    events.ExpectCue(1);
    events.OnWaitForServer();
    events.OnServerAnswered();
    EXPECT_EQ(events.AwaitCue({ kNoTime, kForEver }), CueResult::Late);
}

TEST(GraphEvents, NewCueForgetsThatTheMachineHadNoMeans)
{
    GraphEvents events;
    events.OnBeyondTheMachine();
    EXPECT_TRUE(events.IsBeyondTheMachine());
    events.ExpectCue(1);
    EXPECT_FALSE(events.IsBeyondTheMachine());
}

TEST(GraphEvents, CueAnewForgetsABreakButASeekDoesNot)
{
    GraphEvents events;
    events.OnError();
    events.ExpectCueAfterSeek();
    EXPECT_TRUE(events.IsBroken());
    events.ExpectCue(1);
    EXPECT_FALSE(events.IsBroken());
}

TEST(GraphEvents, BreakPostsOneNotice)
{
    const NoticeWindow window;
    GraphEvents events;
    events.SetWindow(window.Handle());
    events.SetRunning(true);
    events.OnError();
    EXPECT_EQ(window.Notices(), 1);
}

TEST(GraphEvents, EventThatWaitsIsAnnouncedToANewWindow)
{
    const NoticeWindow window;
    GraphEvents events;
    events.OnEnd(events.Play());
    EXPECT_EQ(window.Notices(), 0);
    events.SetWindow(window.Handle());
    EXPECT_EQ(window.Notices(), 1);
}

TEST(GraphEvents, NothingIsPostedWithoutAWindow)
{
    const NoticeWindow window;
    GraphEvents events;
    events.SetWindow(window.Handle());
    events.SetWindow(nullptr);
    events.OnEnd(events.Play());
    EXPECT_EQ(window.Notices(), 0);
}

TEST(GraphEvents, ClearedEventsAreGone)
{
    GraphEvents events;
    events.OnEnd(events.Play());
    events.Clear();
    EXPECT_TRUE(TakeAll(events).empty());
}

} // namespace
