// One second of silence in real time: what a graph runs through for a song that this machine cannot play. Knows no
// song, no engine and no window.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace cardsong::playback {

constexpr double kSilentSeconds = 1.0;

// Where the second stands at any time that it is told; it asks no clock. Times never run backwards.
class SilentTimeline {
public:
    using Time = std::chrono::steady_clock::time_point;

    void Run(Time now);
    // Holds the place.
    void Pause(Time now);
    // Holds the place; a later run through the end counts as a new one.
    void Stop(Time now);
    // Seconds; a place before the beginning is the beginning, one past the end is the end. False for no number.
    bool GoTo(double seconds, Time now);
    // False unless it is a number above 0.
    bool SetRate(double rate, Time now);
    double Rate() const { return m_rate; }
    double Position(Time now) const;

    // When the end comes if nothing changes; nothing while it stands still and after the end was taken.
    std::optional<Time> EndTime() const;
    // True once, when it has run to its end by `now`.
    bool TakeEnd(Time now);

private:
    void Anchor(double seconds, Time now);

    bool m_runs = false;
    bool m_endTaken = false;
    double m_rate = 1.0;
    double m_anchorSeconds = 0.0; // the position when the state, the place or the rate last changed
    Time m_anchorTime{};
};

// Stands at its beginning, stopped, when made. Every call may come from any thread but from within `onEnd`.
class SilentSecond {
public:
    // `onEnd` is called on a thread of this object's own, once for each run through the end. Once Pause, Stop, GoTo or
    // the destructor is back, an end before it is not told any more. `onEnd` must not call this object, nor wait for a
    // thread that does.
    explicit SilentSecond(std::function<void()> onEnd);
    ~SilentSecond();
    SilentSecond(const SilentSecond&) = delete;
    SilentSecond& operator=(const SilentSecond&) = delete;

    // As the timeline's, now.
    void Run();
    void Pause();
    void Stop();
    bool GoTo(double seconds);
    bool SetRate(double rate);
    double Rate() const;
    double Position() const;

private:
    void AwaitEnds();

    const std::function<void()> m_onEnd;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    SilentTimeline m_timeline;
    bool m_closes = false;
    std::thread m_thread; // last: it uses all of the above
};

} // namespace cardsong::playback
