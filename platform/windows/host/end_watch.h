// Ends the session from outside: after a time, or when the console that started the program goes. Knows no window: it
// presses the exit key, so that the player saves what it has to save.
#pragma once

#include <windows.h>

#include <functional>
#include <thread>

namespace cardsong::host {

class EndWatch {
public:
    EndWatch();
    ~EndWatch();
    EndWatch(const EndWatch&) = delete;
    EndWatch& operator=(const EndWatch&) = delete;

    // Watches on a thread of its own. `seconds` 0: no limit. `beforeEnd` runs there before the exit key is pressed.
    void Start(double seconds, std::function<void()> beforeEnd);
    // Watches no longer. Harmless when it never started.
    void Stop();

private:
    void Watch(double seconds);

    HANDLE m_stop = nullptr;
    std::function<void()> m_beforeEnd;
    std::thread m_thread;
};

} // namespace cardsong::host
