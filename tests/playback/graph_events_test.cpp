// What the engine's threads report, and when it reaches the window.
#include "playback/media_graph_gstreamer_events.h"

#include "playback/media_graph.h"

#include <gtest/gtest.h>

#include <vector>

using cardsong::playback::CueResult;
using cardsong::playback::GraphEvents;

namespace {

constexpr std::chrono::milliseconds kNoTime{ 0 };

std::vector<long> TakeAll(GraphEvents& events)
{
    std::vector<long> codes;
    for (long code = 0; events.Take(code);)
        codes.push_back(code);
    return codes;
}

int g_notices = 0;

LRESULT CALLBACK CountNotices(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == kGraphEventMessage && wParam == 0 && lParam == 0)
        ++g_notices;
    return DefWindowProcW(window, message, wParam, lParam);
}

class NoticeWindow {
public:
    NoticeWindow()
    {
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = CountNotices;
        windowClass.lpszClassName = TEXT("NoticeWindow");
        RegisterClassW(&windowClass);
        m_window = CreateWindowExW(0, TEXT("NoticeWindow"), nullptr, WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr,
                                   nullptr);
        g_notices = 0;
    }
    ~NoticeWindow()
    {
        DestroyWindow(m_window);
        UnregisterClassW(TEXT("NoticeWindow"), nullptr);
    }
    HWND Handle() const { return m_window; }
    int Notices() const
    {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
        return g_notices;
    }

private:
    HWND m_window = nullptr;
};

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
    events.ExpectCue();
    EXPECT_EQ(events.AwaitCue(kNoTime), CueResult::Late);
    events.OnCued();
    EXPECT_EQ(events.AwaitCue(kNoTime), CueResult::Ready);
    events.OnError();
    EXPECT_EQ(events.AwaitCue(kNoTime), CueResult::Failed);
}

TEST(GraphEvents, CueAnewForgetsABreakButASeekDoesNot)
{
    GraphEvents events;
    events.OnError();
    events.ExpectCueAfterSeek();
    EXPECT_TRUE(events.IsBroken());
    events.ExpectCue();
    EXPECT_FALSE(events.IsBroken());
}

TEST(GraphEvents, BreakPostsOneNotice)
{
    NoticeWindow window;
    GraphEvents events;
    events.SetWindow(window.Handle());
    events.SetRunning(true);
    events.OnError();
    EXPECT_EQ(window.Notices(), 1);
}

TEST(GraphEvents, EventThatWaitsIsAnnouncedToANewWindow)
{
    NoticeWindow window;
    GraphEvents events;
    events.OnEnd(events.Play());
    EXPECT_EQ(window.Notices(), 0);
    events.SetWindow(window.Handle());
    EXPECT_EQ(window.Notices(), 1);
}

TEST(GraphEvents, NothingIsPostedWithoutAWindow)
{
    NoticeWindow window;
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
