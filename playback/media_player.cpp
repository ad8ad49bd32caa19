#include "playback/media_player.h"

#include "library/file_names.h"

#include <algorithm>

MediaPlayer::MediaPlayer(const WCHAR* path, HWND window)
{
    StorePath(path);
    Open();
    SetNotifyWindow(window);
}

MediaPlayer::~MediaPlayer()
{
    Close();
}

int MediaPlayer::Open()
{
    Close();
    if (!FileExists(m_path))
        return PLAYER_ERR_OPEN;
    auto graph = std::make_unique<MediaGraph>();
    if (!graph->Init())
        return PLAYER_ERR_OPEN;
    m_graph = std::move(graph);
    // A graph that could not be rendered stays open. To the window it is a song without length, or of unknown length.
    m_graph->RenderFile(m_path);
    m_graph->SetVolume(kInitialVolume);
    m_graph->Pause();
    m_graph->SetPosition(0.0);
    return 0;
}

void MediaPlayer::Close()
{
    if (!m_graph)
        return;
    m_graph->Stop();
    m_graph->SetNotifyWindow(nullptr);
    m_graph.reset();
}

void MediaPlayer::SetNotifyWindow(HWND window)
{
    m_window = window;
    if (m_graph)
        m_graph->SetNotifyWindow(window);
}

int MediaPlayer::OpenAndPlay(const WCHAR* path, HWND window)
{
    if (!FileExists(path))
        return PLAYER_ERR_OPEN;
    StorePath(path);
    Close();
    if (Open() == PLAYER_ERR_OPEN)
        return PLAYER_ERR_OPEN;
    SetNotifyWindow(window);
    return Play();
}

int MediaPlayer::Play()
{
    if (!m_graph)
        return PLAYER_ERR_NOT_OPEN;
    m_graph->Run();
    StartProgressTimer();
    m_state = PLAYER_PLAYING;
    return 0;
}

int MediaPlayer::Pause()
{
    if (!m_graph)
        return PLAYER_ERR_NOT_OPEN;
    m_graph->Pause();
    StartProgressTimer();
    m_state = PLAYER_PAUSED;
    return 0;
}

int MediaPlayer::Stop()
{
    if (!m_graph)
        return 0;
    m_graph->SetPosition(0.0);
    m_graph->Stop();
    if (m_progressTimer != 0)
        KillTimer(m_window, m_progressTimer);
    m_progressTimer = 0;
    m_state = PLAYER_STOPPED;
    return 0;
}

double MediaPlayer::GetDuration()
{
    if (!m_graph)
        return 0.0;
    m_durationSeconds = 1.0;
    m_graph->GetDuration(m_durationSeconds);
    return m_durationSeconds;
}

bool MediaPlayer::KnowsDuration() const
{
    double seconds = 0.0;
    return m_graph && m_graph->GetDuration(seconds);
}

double MediaPlayer::GetPosition()
{
    if (!m_graph)
        return 0.0;
    m_graph->GetCurrentPosition(m_positionSeconds);
    return m_positionSeconds;
}

int MediaPlayer::Seek(double seconds)
{
    if (!m_graph)
        return PLAYER_ERR_NOT_OPEN;
    m_graph->SetPosition(seconds);
    return 0;
}

int MediaPlayer::SetVolume(long volume)
{
    if (!m_graph)
        return 0;
    m_graph->SetVolume(volume);
    return 1;
}

long MediaPlayer::GetVolume() const
{
    return m_graph ? m_graph->GetVolume() : 0;
}

bool MediaPlayer::SetRate(double rate)
{
    return m_graph && m_graph->SetRate(rate);
}

double MediaPlayer::GetRate() const
{
    double rate = 0.0;
    if (m_graph)
        m_graph->GetRate(rate);
    return rate;
}

int MediaPlayer::CheckEndOfStream()
{
    long code = 0;
    while (m_graph && m_graph->TakeEvent(code)) {
        if (code == kGraphComplete || code == kGraphUserAbort)
            return 1;
    }
    return 0;
}

void MediaPlayer::StorePath(const WCHAR* path)
{
    std::fill(std::begin(m_path), std::end(m_path), WCHAR{ 0 });
    if (path == nullptr)
        return;
    for (std::size_t i = 0; i + 1 < std::size(m_path) && path[i] != 0; ++i)
        m_path[i] = path[i];
}

void MediaPlayer::StartProgressTimer()
{
    if (m_progressTimer == 0)
        m_progressTimer = SetTimer(m_window, kProgressTimerId, kProgressPeriodMs, nullptr);
}
