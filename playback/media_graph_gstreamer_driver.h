// Drives one chain on a thread of its own: each change of its state may wait for the sound server, and the player's
// thread must not. Knows no graph; what the chain meets goes to GraphEvents.
#pragma once

#include "playback/media_graph_gstreamer_chain.h"

#include <thread>

namespace cardsong::playback {

// Where, how far and how fast a song plays.
struct SongPlace {
    double seconds = 0.0;
    std::optional<double> stopSeconds;
    double rate = 1.0;

    bool IsPlainStart() const { return seconds == 0.0 && !stopSeconds && rate == 1.0; }
};

// Called by one thread. A call returns when the chain has done what it asks for, at the latest after kServerLimit. A
// chain that is late does what was asked last, when the server answers; until then no call waits.
class ChainDriver {
public:
    struct Start {
        SongSource source;
        std::string sinkName; // as for OpenAudioSink
        Chain::Settings settings;
        SongPlace place;
    };
    // Begins to build and to cue the chain. `events`, which expect a cue, are told how it goes.
    ChainDriver(Start start, const std::shared_ptr<GraphEvents>& events);
    // Takes the chain down. A server that hangs keeps it, with its thread, until it answers.
    ~ChainDriver();
    ChainDriver(const ChainDriver&) = delete;
    ChainDriver& operator=(const ChainDriver&) = delete;

    void Run();
    void RunFrom(const SongPlace& place);
    void Pause();
    void GoTo(const SongPlace& place);
    void SetVolumeFactor(double factor);

    // Nothing while the chain is on its way to what was asked for, and nothing that it does not know.
    std::optional<double> PositionSeconds() const;
    std::optional<double> DurationSeconds() const;

private:
    struct Work;
    void Ask(std::optional<GstState> state, const std::optional<SongPlace>& place);

    std::shared_ptr<Work> m_work; // shared with the thread
    std::thread m_thread;
};

} // namespace cardsong::playback
