#include "playback/media_graph_directshow_silence.h"

#include "playback/media_graph.h"

#include <utility>

namespace cardsong::playback {

bool SilentSong::Run()
{
    m_state = State_Running;
    m_second.Run();
    return true;
}

bool SilentSong::Pause()
{
    m_state = State_Paused;
    m_second.Pause();
    return true;
}

bool SilentSong::Stop()
{
    m_state = State_Stopped;
    m_second.Stop();
    return true;
}

void SilentSong::SetNotifyWindow(HWND window)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_window = window;
    if (m_window != nullptr && m_endWaits)
        PostMessageW(m_window, kGraphEventMessage, 0, 0);
}

bool SilentSong::TakeEnd()
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return std::exchange(m_endWaits, false);
}

void SilentSong::OnEnd()
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_endWaits = true;
    if (m_window != nullptr)
        PostMessageW(m_window, kGraphEventMessage, 0, 0);
}

} // namespace cardsong::playback
