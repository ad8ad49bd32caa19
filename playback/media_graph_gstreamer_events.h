// What the engine's threads tell the player's: that a song is cued, that it ended, that it broke off. Thread-safe;
// knows no element.
#pragma once

#include "platform/ce.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>

namespace cardsong::playback {

// As long as a call on the window's thread waits for the sound server.
constexpr std::chrono::milliseconds kServerLimit{ 60 };

// How long a call may wait for a cue: for the song's own bytes (one on a slow card that takes longer goes on cueing by
// itself), and for the server.
struct CueLimits {
    std::chrono::milliseconds song{ 1500 };
    std::chrono::milliseconds server = kServerLimit;
};

enum class CueResult { Ready, Failed, Late };

class GraphEvents {
public:
    // ---- the player's thread ----
    // Null: nothing is posted once the call is back.
    void SetWindow(HWND window);
    bool Take(long& code);
    void Clear();
    // Clears, and an end that is still on its way is not reported either.
    void Forget();

    // To be said before each change after which the engine cues anew: it forgets how the last one went. A cue may take
    // several steps: the song's beginning, and then the place where it is to go on.
    void ExpectCue(int steps);
    // A seek cues anew too, but leaves a broken song broken.
    void ExpectCueAfterSeek();
    bool IsCueing() const;
    // The server's limit runs from when the song's part is done: one that hangs must not hold up the window.
    CueResult AwaitCue(const CueLimits& limits = {});
    // Whether no more than the last step is left; for a thread of the engine, which may wait for the server.
    bool AwaitLastStep(std::chrono::milliseconds limit);
    bool IsBroken() const;
    // Whether the song is music that this machine has no means to play.
    bool IsBeyondTheMachine() const;
    // A song that broke off while it was not running is reported when it is told to run.
    void SetRunning(bool running);

    // ---- any thread ----
    void OnCued();
    // Whether what a cue waits for next is the sound server.
    void OnWaitForServer(bool waits);
    // To be said before the error that comes of it.
    void OnBeyondTheMachine();
    // An end that sounds a little later than it is known: it names the play that it ends, and counts only while that
    // lasts.
    unsigned Play() const;
    void OnEnd(unsigned play);
    void OnError();

private:
    void ReportLocked(long code);
    void ReportBreakLocked();

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<long> m_events;
    HWND m_window = nullptr;
    unsigned m_play = 0;                                                // counts cues and seeks
    int m_cueSteps = 0;                                                 // that are still to come
    std::optional<std::chrono::steady_clock::time_point> m_serverSince; // since when the server is waited for
    bool m_isBeyondTheMachine = false;
    bool m_broken = false;
    bool m_endReported = false;
    bool m_running = false;
};

} // namespace cardsong::playback
