#include "playback/simulated_graph.h"

#include "playback/media_graph.h"
#include "playback/simulated_engine.h"

#include <utility>

namespace {

void EndRunningSongs(std::initializer_list<long> codes)
{
    const SimulationGuard guard(TheSimulation().mutex);
    for (SimulatedEngine* engine : TheSimulation().engines)
        engine->ReportEnd(codes);
}

} // namespace

void SetSimulatedSong(WStringView path, const SimulatedSong& song)
{
    const SimulationGuard guard(TheSimulation().mutex);
    TheSimulation().songs[SimulatedSongKey(path)] = song;
}

void ResetSimulatedGraphs()
{
    const SimulationGuard guard(TheSimulation().mutex);
    TheSimulation().songs.clear();
    TheSimulation().calls.clear();
    TheSimulation().failNextInit = false;
    TheSimulation().runListener = nullptr;
}

void OnSimulatedRun(std::function<void()> listener)
{
    const SimulationGuard guard(TheSimulation().mutex);
    TheSimulation().runListener = std::move(listener);
}

void FailNextSimulatedInit()
{
    const SimulationGuard guard(TheSimulation().mutex);
    TheSimulation().failNextInit = true;
}

void AdvanceSimulatedGraphs()
{
    const SimulationGuard guard(TheSimulation().mutex);
    for (SimulatedEngine* engine : TheSimulation().engines)
        engine->Advance();
}

void FinishCurrentSong()
{
    EndRunningSongs({ kGraphComplete });
}
void BreakCurrentSong()
{
    EndRunningSongs({ kGraphErrorAbort, kGraphComplete });
}
void AbortCurrentSong()
{
    EndRunningSongs({ kGraphUserAbort });
}

std::vector<std::string> TakeSimulatedCalls()
{
    const SimulationGuard guard(TheSimulation().mutex);
    return std::exchange(TheSimulation().calls, {});
}

int LiveSimulatedGraphs()
{
    const SimulationGuard guard(TheSimulation().mutex);
    return static_cast<int>(TheSimulation().engines.size());
}
