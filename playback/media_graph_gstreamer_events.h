// What the engine's threads tell the player's: that a song is cued, that it ended, that it broke off. Thread-safe;
// knows no element.
#pragma once

#include "platform/ce.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>

namespace cardsong::playback {

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

    // To be said before each change after which the engine cues anew: it forgets how the last one went.
    void ExpectCue();
    // A seek cues anew too, but leaves a broken song broken.
    void ExpectCueAfterSeek();
    bool IsCueing() const;
    CueResult AwaitCue(std::chrono::milliseconds limit);
    bool IsBroken() const;
    // A song that broke off while it was not running is reported when it is told to run.
    void SetRunning(bool running);

    // ---- any thread ----
    void OnCued();
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
    unsigned m_play = 0; // counts cues and seeks
    bool m_cueing = false;
    bool m_broken = false;
    bool m_endReported = false;
    bool m_running = false;
};

} // namespace cardsong::playback
