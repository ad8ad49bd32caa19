// One song in the graph: where it stands, how fast and how loud it plays, and the chain that plays it. One thread calls
// it.
#pragma once

#include "playback/media_graph_gstreamer_driver.h"
#include "playback/media_graph_silent_second.h"

#include <memory>
#include <optional>
#include <string>

namespace cardsong::playback {

enum class GraphState { Stopped, Paused, Running };

enum class RenderResult { Ready, NoMusic, BeyondTheMachine };

// The chain lives while the song is cued or plays. Rendering cues the song at once, for only a cue shows whether it can
// be played; the graph still counts as stopped. A song that was stopped has no chain, and so holds neither file nor
// sink. A song that this machine cannot play is a second of silence of unknown length.
class Song {
public:
    ~Song();

    // A file without music leaves the song as it was.
    RenderResult Render(const std::string& hostPath);
    bool IsRendered() const { return !m_hostPath.empty(); }
    GraphEvents& Events() { return *m_events; }

    GraphState State() const { return m_state; }
    // Without a rendered file only the state changes. False when the song turns out to be broken.
    bool EnterState(GraphState state);

    // Seconds. A place past the end is the end.
    double Position();
    bool GoTo(double seconds);
    void StopAt(double seconds);
    std::optional<double> StopPosition() const { return m_stopSeconds; }
    // Nothing while it is not known, and never known for a song that this machine cannot play.
    std::optional<double> Duration();
    bool SetRate(double rate);
    double Rate() const { return m_rate; }

    // Hundredths of a decibel, as in MediaGraph.
    void SetVolume(long volume);
    long Volume() const { return m_volume; }
    bool SetBalance(long balance);
    long Balance() const { return m_balance; }

private:
    // A song's file, looked into.
    struct Look {
        SongSource source;
        std::optional<double> seconds;
        bool isProtected = false;
    };
    static std::optional<Look> LookAt(const std::string& hostPath);
    RenderResult Cue(Look look);
    bool CueAgain();
    void EnterSilence();
    bool Run();
    bool Pause();
    void Stop();
    void DropChain();
    SongPlace PlaceAt(double seconds) const { return { seconds, m_stopSeconds, m_rate }; }

    std::shared_ptr<GraphEvents> m_events = std::make_shared<GraphEvents>();
    std::string m_hostPath; // empty: nothing rendered
    std::unique_ptr<ChainDriver> m_driver;
    std::unique_ptr<SilentSecond> m_silence; // in place of a chain
    GraphState m_state = GraphState::Stopped;
    bool m_untouched = false;    // cued at m_startSeconds, and not run since
    double m_startSeconds = 0.0; // where the next cue begins, or the last seek went
    std::optional<double> m_stopSeconds;
    double m_rate = 1.0;
    long m_volume = 0;
    long m_balance = 0;
    double m_lastPositionSeconds = 0.0; // the answer while the chain knows none
    bool m_isHeld = false;              // the song stands still there: the chain need not be asked again
    std::optional<double> m_seconds;    // the song's length
};

} // namespace cardsong::playback
