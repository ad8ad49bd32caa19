// What the engine on DirectShow does in place of its graph for a song that this machine cannot play: one silent second
// with a state, a notice and an end. Knows no filter.
#pragma once

#include "playback/media_graph_silent_second.h"

#include "platform/ce.h"

#include <dshow.h>

#include <mutex>

namespace cardsong::playback {

// All calls come from the player's thread. Stands at its beginning, stopped, when made.
class SilentSong {
public:
    // `window`: as for SetNotifyWindow.
    explicit SilentSong(HWND window) : m_window(window) {}

    // True.
    bool Run();
    bool Pause();
    bool Stop();
    OAFilterState State() const { return m_state; }
    // Null: no notices. An end that waits is announced to the new window.
    void SetNotifyWindow(HWND window);
    // Takes the end, of which there is at most one.
    bool TakeEnd();
    SilentSecond& Second() { return m_second; }
    const SilentSecond& Second() const { return m_second; }

private:
    void OnEnd();

    OAFilterState m_state = State_Stopped;
    std::mutex m_mutex; // guards the two below: the end comes on a thread of its own
    HWND m_window;
    bool m_endWaits = false;
    SilentSecond m_second{ [this] { OnEnd(); } }; // last: it calls what stands above
};

} // namespace cardsong::playback
