#include "playback/media_graph_gstreamer_events.h"

#include "playback/media_graph.h"

namespace cardsong::playback {

void GraphEvents::SetWindow(HWND window)
{
    const std::lock_guard lock(m_mutex);
    m_window = window;
    if (window != nullptr && !m_events.empty())
        PostMessageW(window, kGraphEventMessage, 0, 0);
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
    ++m_play;
}

unsigned GraphEvents::Play() const
{
    const std::lock_guard lock(m_mutex);
    return m_play;
}

void GraphEvents::ExpectCue()
{
    const std::lock_guard lock(m_mutex);
    m_cueing = true;
    ++m_play;
    m_broken = false;
    m_endReported = false;
}

void GraphEvents::ExpectCueAfterSeek()
{
    const std::lock_guard lock(m_mutex);
    m_cueing = true;
    ++m_play;
    if (!m_broken)
        m_endReported = false;
}

bool GraphEvents::IsCueing() const
{
    const std::lock_guard lock(m_mutex);
    return m_cueing;
}

CueResult GraphEvents::AwaitCue(std::chrono::milliseconds limit)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait_for(lock, limit, [this] { return m_broken || !m_cueing; });
    if (m_broken)
        return CueResult::Failed;
    return m_cueing ? CueResult::Late : CueResult::Ready;
}

bool GraphEvents::IsBroken() const
{
    const std::lock_guard lock(m_mutex);
    return m_broken;
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
    m_cueing = false;
    m_changed.notify_all();
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
    m_cueing = false;
    m_changed.notify_all();
    ReportBreakLocked();
}

// One notice for both: who takes events takes all.
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
