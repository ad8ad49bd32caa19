// The connection to a Wayland compositor: what was sent is read and handed out here. Never waits for a compositor that
// is busy or hangs, except where a limit is given. The display's thread only.
#pragma once

#include "platform/linux/display/event_wait.h"
#include "platform/linux/display/wayland_objects.h"

#include <string>

namespace cardsong::display {

class WaylandConnection {
public:
    // `name`: of the socket in XDG_RUNTIME_DIR, or its whole path. An empty text, or why there is no connection after
    // `limitMs`.
    [[nodiscard]] std::string Connect(const std::string& name, int limitMs);
    wl_display& Raw() const { return *m_display; }
    // Hands out the events that were read; false when there were none.
    bool Dispatch();
    // Sends what is to be sent, waits at most `limitMs` (negative: without a limit) for the compositor or a wake-up,
    // and reads. False when the compositor is gone.
    [[nodiscard]] bool Wait(EventWait& wait, int limitMs);
    // Returns when the compositor has seen all requests so far and all its answers were handed out; false when that is
    // not so in `limitMs`.
    [[nodiscard]] bool AwaitAnswers(EventWait& wait, int limitMs);
    // A request was wrong, or the compositor is gone.
    bool IsLost() const { return m_isLost; }
    // Sends at last what fits, and closes.
    void Close();

private:
    WaylandPtr<wl_display> m_display;
    bool m_isLost = false;
};

} // namespace cardsong::display
