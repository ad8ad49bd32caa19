// The wait of the display's thread: for its server, and for other threads that have something for it. The window
// library's own wake-up is not used: it sends a message to the window over a second connection, and when the window is
// gone by the time it arrives, the server's complaint ends the process.
#pragma once

#include <SDL_video.h>

namespace cardsong::display {

class EventWait {
public:
    EventWait();
    ~EventWait();
    EventWait(const EventWait&) = delete;
    EventWait& operator=(const EventWait&) = delete;

    // Ends the wait that is on or, if none is, the next one. Any thread.
    void WakeUp();
    // Waits for the server of `window`, too, from now on. The display's thread, as what follows.
    void Watch(SDL_Window& window);
    // Returns when there may be something to do. False: the server is gone. Call it only after the window library was
    // asked for events and had none: what it has read already wakes nobody.
    [[nodiscard]] bool Wait();

private:
    const int m_wakeUp; // an eventfd
    int m_server = -1;  // the connection; -1 where the library reads the input devices itself
};

// Has `lost` called on the thread that finds the X server dead within a call of the window library. `lost` must not
// return, nor call X: the library would end the process. Does nothing where the window library has not loaded X.
void OnXServerLost(void (*lost)());

} // namespace cardsong::display
