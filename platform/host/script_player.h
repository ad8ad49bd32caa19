// A thread that plays an input script with the hands that a system lends it.
#pragma once

#include "platform/host/input_script.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace cardsong::host {

// What a script can do to the running program. Called on the player's thread.
class InputHands {
public:
    virtual ~InputHands() = default;
    virtual void Press(UINT key) = 0;
    virtual void Command(WORD command) = 0; // see CommandKey
    virtual void Tap(int x, int y) = 0;
    // False when the picture could not be written.
    virtual bool Shoot(const std::string& path) = 0;
    // Lets so much time pass. Returns earlier when `ended` becomes true; `changed` is notified then.
    virtual void Wait(std::unique_lock<std::mutex>& lock, std::condition_variable& changed, std::uint32_t milliseconds,
                      const std::function<bool()>& ended) = 0;
};

class ScriptPlayer {
public:
    // `hands` is borrowed for the player's life.
    explicit ScriptPlayer(InputHands& hands) : m_hands(hands) {}
    ~ScriptPlayer();
    ScriptPlayer(const ScriptPlayer&) = delete;
    ScriptPlayer& operator=(const ScriptPlayer&) = delete;

    // Plays on a thread of its own. Call it once.
    void Start(std::vector<ScriptStep> steps);
    // Ends at the next step and waits for the thread.
    void Stop();
    // False once a picture could not be written.
    bool AllWritten() const { return m_allWritten; }
    bool IsFinished() const { return m_isFinished; }

private:
    void Play(const ScriptStep& step);

    InputHands& m_hands;
    std::thread m_thread;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_stops = false;
    std::atomic<bool> m_allWritten = true;
    std::atomic<bool> m_isFinished = false;
};

} // namespace cardsong::host
