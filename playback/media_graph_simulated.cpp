// The engine of tests: positions follow the tick count, ends are reported when somebody looks.
#include "playback/media_graph.h"
#include "playback/simulated_engine.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

namespace {

constexpr double kSilentSeconds = 1.0; // of a song that the machine cannot play

std::string Printable(const WCHAR* text)
{
    std::string printable;
    for (; *text != 0; ++text)
        printable += *text < 0x80 ? static_cast<char>(*text) : '?';
    return printable;
}

void NoteCall(const std::string& call)
{
    TheSimulation().calls.push_back(call);
}

void NoteCall(const char* call, double value)
{
    char text[64];
    std::snprintf(text, sizeof text, "%s %.1f", call, value);
    NoteCall(text);
}

} // namespace

struct MediaGraph::Engine : SimulatedEngine {
    Engine() { TheSimulation().engines.push_back(this); }
    ~Engine() { std::erase(TheSimulation().engines, this); }
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;
};

void MediaGraph::WarmUp() {}

MediaGraph::MediaGraph() = default;

MediaGraph::~MediaGraph()
{
    MediaGraph::ReleaseAll();
}

bool MediaGraph::Init()
{
    const SimulationGuard guard(TheSimulation().mutex);
    NoteCall("Init");
    if (m_engine || std::exchange(TheSimulation().failNextInit, false))
        return false;
    m_engine = std::make_unique<Engine>();
    return true;
}

void MediaGraph::ReleaseAll()
{
    const SimulationGuard guard(TheSimulation().mutex);
    if (m_engine)
        NoteCall("ReleaseAll");
    m_engine.reset();
}

bool MediaGraph::RenderFile(const WCHAR* path)
{
    const SimulationGuard guard(TheSimulation().mutex);
    if (!m_engine || path == nullptr)
        return false;
    NoteCall("RenderFile " + Printable(path));
    const auto named = TheSimulation().songs.find(SimulatedSongKey(path));
    SimulatedSong song = named == TheSimulation().songs.end() ? SimulatedSong{} : named->second;
    if (!song.playable)
        return false;
    if (song.decoderMissing) {
        song.lengthSeconds = kSilentSeconds;
        song.lengthKnown = false;
    }
    m_engine->song = song;
    return m_engine->HasSound();
}

bool MediaGraph::Run()
{
    const SimulationGuard guard(TheSimulation().mutex);
    if (!m_engine)
        return false;
    if (IsRunning())
        return true;
    NoteCall("Run");
    SetVideoOwner(nullptr);
    m_engine->EnterState(GraphState::Running);
    if (TheSimulation().runListener)
        TheSimulation().runListener();
    return true;
}

bool MediaGraph::Pause()
{
    const SimulationGuard guard(TheSimulation().mutex);
    if (!m_engine)
        return false;
    if (IsPaused())
        return true;
    NoteCall("Pause");
    m_engine->EnterState(GraphState::Paused);
    return true;
}

bool MediaGraph::Stop()
{
    const SimulationGuard guard(TheSimulation().mutex);
    if (!m_engine)
        return false;
    if (IsStopped())
        return true;
    NoteCall("Stop");
    m_engine->EnterState(GraphState::Stopped);
    m_engine->endReported = false;
    return true;
}

bool MediaGraph::IsRunning() const
{
    return m_engine && m_engine->state == GraphState::Running;
}
bool MediaGraph::IsPaused() const
{
    return m_engine && m_engine->state == GraphState::Paused;
}
bool MediaGraph::IsStopped() const
{
    return m_engine && m_engine->state == GraphState::Stopped;
}

bool MediaGraph::SetNotifyWindow(HWND window)
{
    const SimulationGuard guard(TheSimulation().mutex);
    if (!m_engine)
        return false;
    NoteCall(window != nullptr ? "SetNotifyWindow on" : "SetNotifyWindow off");
    m_engine->window = window;
    if (window != nullptr && !m_engine->events.empty())
        PostMessageW(window, kGraphEventMessage, 0, 0);
    return true;
}

bool MediaGraph::TakeEvent(long& code)
{
    const SimulationGuard guard(TheSimulation().mutex);
    if (!m_engine || m_engine->events.empty())
        return false;
    code = m_engine->events.front();
    m_engine->events.pop_front();
    return true;
}

void MediaGraph::DrainEvents()
{
    const SimulationGuard guard(TheSimulation().mutex);
    if (m_engine)
        m_engine->events.clear();
}

bool MediaGraph::GetDuration(double& seconds) const
{
    if (!m_engine || (m_engine->song && !m_engine->song->lengthKnown))
        return false;
    seconds = m_engine->song ? m_engine->song->lengthSeconds : 0.0;
    return true;
}

bool MediaGraph::GetCurrentPosition(double& seconds) const
{
    const SimulationGuard guard(TheSimulation().mutex);
    if (!m_engine)
        return false;
    m_engine->Advance();
    seconds = m_engine->PositionSeconds();
    return true;
}

bool MediaGraph::GetStopPosition(double& seconds) const
{
    if (!m_engine)
        return false;
    seconds = m_engine->EndSeconds();
    return true;
}

bool MediaGraph::SetPosition(double seconds)
{
    const SimulationGuard guard(TheSimulation().mutex);
    if (!m_engine)
        return false;
    NoteCall("SetPosition", seconds);
    if (!m_engine->song || !std::isfinite(seconds))
        return false;
    m_engine->endReported = false;
    m_engine->Anchor(std::clamp(seconds, 0.0, m_engine->song->lengthSeconds));
    return true;
}

bool MediaGraph::SetPositions(double start, double stop)
{
    const SimulationGuard guard(TheSimulation().mutex);
    if (!std::isfinite(stop) || stop < std::max(start, 0.0) || !SetPosition(start))
        return false;
    m_engine->stopSeconds = stop;
    return true;
}

bool MediaGraph::SetRate(double rate)
{
    const SimulationGuard guard(TheSimulation().mutex);
    if (!m_engine || !(rate > 0.0))
        return false;
    NoteCall("SetRate", rate);
    m_engine->Anchor(m_engine->PositionSeconds());
    m_engine->rate = rate;
    return true;
}

bool MediaGraph::GetRate(double& rate) const
{
    if (!m_engine)
        return false;
    rate = m_engine->rate;
    return true;
}

bool MediaGraph::SetVolume(long volume)
{
    const SimulationGuard guard(TheSimulation().mutex);
    if (!m_engine)
        return false;
    NoteCall("SetVolume " + std::to_string(volume));
    if (!m_engine->HasSound() || volume < kSilent || volume > kLoudest)
        return false;
    m_engine->volume = volume;
    return true;
}

long MediaGraph::GetVolume() const
{
    return m_engine && m_engine->HasSound() ? m_engine->volume : 0;
}

bool MediaGraph::SetBalance(long balance)
{
    if (!m_engine || !m_engine->HasSound() || balance < kSilent || balance > -kSilent)
        return false;
    m_engine->balance = balance;
    return true;
}

long MediaGraph::GetBalance() const
{
    return m_engine && m_engine->HasSound() ? m_engine->balance : 0;
}
