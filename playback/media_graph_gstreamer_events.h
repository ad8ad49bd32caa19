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

// The longest that a call on the window's thread waits for the sound server.
constexpr std::chrono::milliseconds kServerLimit{ 60 };

// How long a call waits for a cue. A song that takes longer, on a slow card, goes on cueing by itself.
struct CueLimits {
    std::chrono::milliseconds song{ 1500 }; // for the song's own bytes
    std::chrono::milliseconds server = kServerLimit;
};

enum class CueResult { Ready, Failed, Late };

class GraphEvents {
public:
    // ---- the player's thread ----
    // Null: nothing is posted any more when the call is back.
    void SetWindow(HWND window);
    bool Take(long& code);
    void Clear();
    // Clears. An end that is still on its way is not reported any more.
    void Forget();

    // Said before each change after which the engine cues anew. What came of the last cue is forgotten. A cue has two
    // steps where the song has to go on from its beginning to another place.
    void ExpectCue(int steps);
    // Said before a seek, which cues anew too. A broken song stays broken.
    void ExpectCueAfterSeek();
    bool IsCueing() const;
    // The server's limit begins when the server is waited for: one that hangs must not hold up the window.
    CueResult AwaitCue(const CueLimits& limits = {});
    // Waits until only the last step is left. False for a broken song and after `limit`. It may wait for the server, so
    // only a thread of the engine asks.
    bool AwaitLastStep(std::chrono::milliseconds limit);
    bool IsBroken() const;
    // Whether the song is music that this machine has no means to play.
    bool IsBeyondTheMachine() const;
    // A song that broke off while it was not running is reported when it is told to run.
    void SetRunning(bool running);

    // ---- any thread ----
    void OnCued();
    // The cue waits for the sound server from now on.
    void OnWaitForServer();
    void OnServerAnswered();
    // Said before the error that comes of it.
    void OnBeyondTheMachine();
    // An end is known a little before it has sounded. It names the play that it ends, and counts only while that play
    // lasts.
    unsigned Play() const;
    void OnEnd(unsigned play);
    void OnError();
    // The sound server asks the song to give way to another sound, or lets it go on: kAnotherSounds, kSongMaySound.
    void OnSoundServerAsks(WORD state);

private:
    void ReportLocked(long code);
    void ReportBreakLocked();
    void PostAskedStateLocked();

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
    std::optional<WORD> m_askedState; // what no window has heard yet
};

} // namespace cardsong::playback
