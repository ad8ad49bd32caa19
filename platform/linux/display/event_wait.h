// How the display's thread waits: for its server, and for other threads that have something for it. The window
// library's own wake-up is not used: it sends a message to the window over a second connection. When the window is gone
// by then, the server's complaint ends the process.
#pragma once

#include <SDL_video.h>

namespace cardsong::display {

class EventWait {
public:
    EventWait();
    ~EventWait();
    EventWait(const EventWait&) = delete;
    EventWait& operator=(const EventWait&) = delete;

    // Ends the wait under way, or else the next one. Any thread.
    void WakeUp();
    // From now on Wait waits for the server of `window`, too. The display's thread calls this, and Wait.
    void Watch(SDL_Window& window);
    // Returns when there may be something to do; false when the server is gone. Call it only when the window library
    // has no event left: one that it has read already ends no wait.
    [[nodiscard]] bool Wait();

private:
    const int m_wakeUp; // an eventfd
    int m_server = -1;  // the connection; -1 where the library reads the input devices itself
};

// When a call of the window library finds the X server dead, `lost` is called on that thread. It must neither return
// nor call X: the library would end the process. Does nothing where the window library has not loaded X.
void OnXServerLost(void (*lost)());

} // namespace cardsong::display
