// The one clock behind tick counts, sleeps, waits and timers. Knows nothing of windows; tests install a virtual one.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <list>
#include <mutex>

namespace cardsong::kernel {

constexpr std::uint64_t kNever = UINT64_MAX;

class Clock {
public:
    virtual ~Clock() = default;
    // Milliseconds since an arbitrary start; never falls.
    virtual std::uint64_t NowMs() const = 0;
    // Waits on `condition`, whose mutex `lock` holds, until `ready` is true or `deadlineMs` (kNever: no limit) has
    // come. `ready` is called with the lock held. Returns the last answer of `ready`.
    virtual bool WaitUntil(std::unique_lock<std::mutex>& lock, std::condition_variable& condition,
                           std::uint64_t deadlineMs, const std::function<bool()>& ready) = 0;
};

// The clock in force; the monotonic one unless another is installed.
Clock& CurrentClock();
// Puts `clock` (borrowed; null: the monotonic clock) in force. Call it while no other thread waits.
void InstallClock(Clock* clock);

// Time that stands still until a test advances it.
class VirtualClock final : public Clock {
public:
    std::uint64_t NowMs() const override;
    bool WaitUntil(std::unique_lock<std::mutex>& lock, std::condition_variable& condition, std::uint64_t deadlineMs,
                   const std::function<bool()>& ready) override;
    // Moves time forward and wakes every waiter whose deadline has come; returns when each of them is awake. The caller
    // holds no mutex that a waiter waits with.
    void Advance(std::uint64_t milliseconds);

private:
    struct Waiter {
        std::condition_variable* condition;
        std::uint64_t deadlineMs;
    };

    mutable std::mutex m_mutex;
    std::condition_variable m_woken;
    std::list<Waiter> m_waiters;
    std::uint64_t m_nowMs = 1000;
};

} // namespace cardsong::kernel
