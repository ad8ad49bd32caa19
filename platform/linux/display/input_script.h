// Input written down as text, and a thread that plays it: "Enter wait:500 tap:160,120 shot:/tmp/a.png Exit".
#pragma once

#include "platform/linux/ce/types.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <variant>
#include <vector>

namespace cardsong::display {

struct KeyStep {
    UINT key;
    bool operator==(const KeyStep&) const = default;
};
struct WaitStep {
    std::uint32_t milliseconds;
    bool operator==(const WaitStep&) const = default;
};
struct TapStep {
    int x;
    int y;
    bool operator==(const TapStep&) const = default;
};
struct ShotStep {
    std::string path;
    bool operator==(const ShotStep&) const = default;
};
using ScriptStep = std::variant<KeyStep, WaitStep, TapStep, ShotStep>;

struct ScriptError {
    std::string message; // one line that names the bad word and says what is wrong with it
};

// Words are separated by blanks: Enter, Left, Right, Up, Down, Exit; wait:MS (at most an hour); tap:X,Y within the
// screen; shot:FILE.
std::variant<std::vector<ScriptStep>, ScriptError> ParseInputScript(std::string_view text);

class ScriptPlayer {
public:
    ScriptPlayer() = default;
    ~ScriptPlayer();
    ScriptPlayer(const ScriptPlayer&) = delete;
    ScriptPlayer& operator=(const ScriptPlayer&) = delete;

    // Plays on a thread of its own; waits are taken from the clock in force. Call it once.
    void Start(std::vector<ScriptStep> steps);
    // Ends at the next step and waits for the thread.
    void Stop();
    // False once a picture could not be written.
    bool AllWritten() const { return m_allWritten; }
    bool IsFinished() const { return m_isFinished; }

private:
    void Play(const ScriptStep& step);
    void Wait(std::uint32_t milliseconds);

    std::thread m_thread;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_stops = false;
    std::atomic<bool> m_allWritten = true;
    std::atomic<bool> m_isFinished = false;
};

} // namespace cardsong::display
