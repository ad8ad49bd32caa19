#include "playback/media_graph_gstreamer_events.h"

#include "common/device_messages.h"
#include "playback/media_graph.h"

#include <algorithm>

namespace cardsong::playback {

namespace {

using Clock = std::chrono::steady_clock;

} // namespace

void GraphEvents::SetWindow(HWND window)
{
    const std::lock_guard lock(m_mutex);
    m_window = window;
    if (window != nullptr && !m_events.empty())
        PostMessageW(window, kGraphEventMessage, 0, 0);
    PostAskedStateLocked();
}

bool GraphEvents::Take(long& code)
{
    const std::lock_guard lock(m_mutex);
    if (m_events.empty())
        return false;
    code = m_events.front();
    m_events.pop_front();
    return true;
}

void GraphEvents::Clear()
{
    const std::lock_guard lock(m_mutex);
    m_events.clear();
}

void GraphEvents::Forget()
{
    const std::lock_guard lock(m_mutex);
    m_events.clear();
    m_askedState.reset();
    ++m_play;
}

unsigned GraphEvents::Play() const
{
    const std::lock_guard lock(m_mutex);
    return m_play;
}

void GraphEvents::ExpectCue(int steps)
{
    const std::lock_guard lock(m_mutex);
    m_cueSteps = steps;
    m_serverSince.reset();
    ++m_play;
    m_broken = false;
    m_isBeyondTheMachine = false;
    m_endReported = false;
}

void GraphEvents::ExpectCueAfterSeek()
{
    const std::lock_guard lock(m_mutex);
    m_cueSteps = 1;
    ++m_play;
    if (!m_broken)
        m_endReported = false;
}

bool GraphEvents::IsCueing() const
{
    const std::lock_guard lock(m_mutex);
    return m_cueSteps > 0;
}

CueResult GraphEvents::AwaitCue(const CueLimits& limits)
{
    std::unique_lock lock(m_mutex);
    const Clock::time_point start = Clock::now();
    while (!m_broken && m_cueSteps > 0) {
        const Clock::time_point until =
            m_serverSince ? std::max(*m_serverSince, start) + limits.server : start + limits.song;
        if (Clock::now() >= until)
            return CueResult::Late;
        m_changed.wait_until(lock, until);
    }
    return m_broken ? CueResult::Failed : CueResult::Ready;
}

bool GraphEvents::AwaitLastStep(std::chrono::milliseconds limit)
{
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, limit, [this] { return m_broken || m_cueSteps <= 1; }) && !m_broken;
}

bool GraphEvents::IsBroken() const
{
    const std::lock_guard lock(m_mutex);
    return m_broken;
}

bool GraphEvents::IsBeyondTheMachine() const
{
    const std::lock_guard lock(m_mutex);
    return m_isBeyondTheMachine;
}

void GraphEvents::SetRunning(bool running)
{
    const std::lock_guard lock(m_mutex);
    m_running = running;
    if (m_broken)
        ReportBreakLocked();
}

void GraphEvents::OnCued()
{
    const std::lock_guard lock(m_mutex);
    m_cueSteps = std::max(m_cueSteps - 1, 0);
    m_serverSince.reset();
    m_changed.notify_all();
}

void GraphEvents::OnWaitForServer()
{
    const std::lock_guard lock(m_mutex);
    if (m_serverSince)
        return;
    m_serverSince = Clock::now();
    m_changed.notify_all();
}

void GraphEvents::OnServerAnswered()
{
    const std::lock_guard lock(m_mutex);
    m_serverSince.reset();
    m_changed.notify_all();
}

void GraphEvents::OnBeyondTheMachine()
{
    const std::lock_guard lock(m_mutex);
    m_isBeyondTheMachine = true;
}

void GraphEvents::OnEnd(unsigned play)
{
    const std::lock_guard lock(m_mutex);
    if (play != m_play || m_broken || m_endReported)
        return;
    m_endReported = true;
    ReportLocked(kGraphComplete);
}

void GraphEvents::OnError()
{
    const std::lock_guard lock(m_mutex);
    m_broken = true;
    m_cueSteps = 0;
    m_changed.notify_all();
    ReportBreakLocked();
}

void GraphEvents::OnSoundServerAsks(WORD state)
{
    const std::lock_guard lock(m_mutex);
    m_askedState = state;
    PostAskedStateLocked();
}

// A server that is busy with a call asks as soon as it knows the song, before the song has a window.
void GraphEvents::PostAskedStateLocked()
{
    if (m_window == nullptr || !m_askedState)
        return;
    PostMessageW(m_window, RegisterWindowMessageW(kAudioManagerMessage), MAKEWPARAM(0, *m_askedState), 0);
    m_askedState.reset();
}

// Two events and one notice: who takes events takes all.
void GraphEvents::ReportBreakLocked()
{
    if (!m_running || m_endReported)
        return;
    m_endReported = true;
    m_events.push_back(kGraphErrorAbort);
    ReportLocked(kGraphComplete);
}

// Posted under the lock, so that SetWindow(null) waits for a notice on its way.
void GraphEvents::ReportLocked(long code)
{
    m_events.push_back(code);
    if (m_window != nullptr)
        PostMessageW(m_window, kGraphEventMessage, 0, 0);
}

} // namespace cardsong::playback
