// Ends the session from outside: after a time, or when the system asks the process to end. Knows no window: it presses
// the exit key, so that the player saves what it has to save.
#pragma once

#include <atomic>
#include <chrono>
#include <csignal>
#include <functional>
#include <thread>

namespace cardsong::host {

class EndWatch {
public:
    // Blocks the signals that ask a process to end, on this thread and those that it starts later. Make it before any.
    // One that is set to be ignored stays so: whoever started the process keeps it from that signal. A player that
    // leaves three requests without an answer for `patience` hangs: the next one ends the process with status 130.
    explicit EndWatch(std::chrono::milliseconds patience = std::chrono::seconds(2));
    ~EndWatch();
    EndWatch(const EndWatch&) = delete;
    EndWatch& operator=(const EndWatch&) = delete;

    // Watches on a thread of its own. `seconds` 0: no limit. `beforeEnd` runs there before the exit key is pressed.
    void Start(double seconds, std::function<void()> beforeEnd);
    // Watches no longer. Harmless when it never started.
    void Stop();

private:
    void Watch(double seconds, const std::function<void()>& beforeEnd);

    const sigset_t m_signals;
    const std::chrono::milliseconds m_patience;
    std::thread m_thread;
    std::atomic<bool> m_stops = false;
};

} // namespace cardsong::host
