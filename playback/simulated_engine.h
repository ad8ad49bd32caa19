// What stands behind a graph of the simulated engine, and what all these graphs share. Knows no clock but the tick
// count.
#pragma once

#include "platform/ce.h"
#include "playback/simulated_graph.h"

#include <deque>
#include <functional>
#include <initializer_list>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

enum class GraphState { Stopped, Paused, Running };

// Where the song of one graph stands, and the events that wait to be taken.
struct SimulatedEngine {
    std::optional<SimulatedSong> song; // nothing: an empty graph
    GraphState state = GraphState::Stopped;
    double anchorSeconds = 0.0; // the position when the state, the place or the speed last changed
    DWORD anchorTick = 0;
    std::optional<double> stopSeconds;
    double rate = 1.0;
    long volume = 0;
    long balance = 0;
    bool endReported = false;
    HWND window = nullptr;
    std::deque<long> events;

    bool HasSound() const { return song && !song->decoderMissing; }
    double EndSeconds() const;
    double PositionSeconds() const;
    void Anchor(double seconds);
    void EnterState(GraphState next);
    // Reports these events if the song runs and its end was not reported yet.
    void ReportEnd(std::initializer_list<long> codes);
    // Reports the end when the song's time is over: nobody but who looks finds out.
    void Advance();

private:
    void Report(long code);
};

// One lock for all: a test may end a song from a thread of its own.
struct Simulation {
    std::recursive_mutex mutex;
    std::map<WString, SimulatedSong> songs; // by SimulatedSongKey
    std::vector<std::string> calls;
    std::vector<SimulatedEngine*> engines; // those that live
    bool failNextInit = false;
    std::function<void()> runListener;
};

Simulation& TheSimulation();

using SimulationGuard = std::lock_guard<std::recursive_mutex>;

// Paths that differ in the case of letters only have the same key.
WString SimulatedSongKey(WStringView path);
