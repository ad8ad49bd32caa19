// How a display's thread waits: for its server, and for other threads that have something for it.
#pragma once

namespace cardsong::display {

class EventWait {
public:
    EventWait();
    ~EventWait();
    EventWait(const EventWait&) = delete;
    EventWait& operator=(const EventWait&) = delete;

    // Ends the wait under way, or else the next one. Any thread.
    void WakeUp();
    // Waits at most `limitMs` (negative: without a limit) for the connection `server` (-1: there is none) to be ready
    // for `events`, as poll names them. Returns those that came; 0 when something else ended the wait.
    short Wait(int server, short events, int limitMs);

private:
    const int m_wakeUp; // an eventfd
};

} // namespace cardsong::display
