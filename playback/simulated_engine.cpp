#include "playback/simulated_engine.h"

#include "playback/media_graph.h"

#include <algorithm>

double SimulatedEngine::EndSeconds() const
{
    return song ? std::min(song->lengthSeconds, stopSeconds.value_or(song->lengthSeconds)) : 0.0;
}

double SimulatedEngine::PositionSeconds() const
{
    if (!song || state != GraphState::Running || endReported)
        return anchorSeconds;
    const double playedSeconds = static_cast<double>(GetTickCount() - anchorTick) / 1000.0 * rate;
    return std::min(anchorSeconds + playedSeconds, std::max(anchorSeconds, EndSeconds()));
}

void SimulatedEngine::Anchor(double seconds)
{
    anchorSeconds = seconds;
    anchorTick = GetTickCount();
}

void SimulatedEngine::EnterState(GraphState next)
{
    Anchor(PositionSeconds());
    state = next;
}

void SimulatedEngine::ReportEnd(std::initializer_list<long> codes)
{
    if (!song || state != GraphState::Running || endReported)
        return;
    Anchor(PositionSeconds());
    endReported = true;
    for (const long code : codes)
        Report(code);
}

void SimulatedEngine::Advance()
{
    if (PositionSeconds() >= EndSeconds())
        ReportEnd({ kGraphComplete });
}

void SimulatedEngine::Report(long code)
{
    events.push_back(code);
    if (window != nullptr)
        PostMessageW(window, kGraphEventMessage, 0, 0);
}

Simulation& TheSimulation()
{
    static Simulation s_simulation;
    return s_simulation;
}

WString SimulatedSongKey(WStringView path)
{
    WString key(path);
    CharLowerBuffW(key.data(), static_cast<DWORD>(key.size()));
    return key;
}
