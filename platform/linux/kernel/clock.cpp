#include "platform/linux/kernel/clock.h"

#include "platform/linux/ce/kernel.h"
#include "platform/linux/kernel/rest.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

namespace cardsong::kernel {
namespace {

class MonotonicClock final : public Clock {
public:
    std::uint64_t NowMs() const override
    {
        return static_cast<std::uint64_t>(
            std::chrono::duration_cast<std::chrono::milliseconds>(Now().time_since_epoch()).count());
    }

    bool WaitUntil(std::unique_lock<std::mutex>& lock, std::condition_variable& condition, std::uint64_t deadlineMs,
                   const std::function<bool()>& ready) override
    {
        if (deadlineMs == kNever) {
            condition.wait(lock, ready);
            return true;
        }
        const std::chrono::steady_clock::time_point deadline{ std::chrono::milliseconds(deadlineMs) };
        while (!ready()) {
            if (Now() >= deadline)
                return false;
            condition.wait_until(lock, deadline);
        }
        return true;
    }

private:
    static std::chrono::steady_clock::time_point Now() { return std::chrono::steady_clock::now(); }
};

std::atomic<Clock*> g_installedClock = nullptr;

Clock& TheMonotonicClock()
{
    static auto* const s_clock = new MonotonicClock; // outlives every waiting thread
    return *s_clock;
}

} // namespace

Clock& CurrentClock()
{
    Clock* const installed = g_installedClock.load(std::memory_order_acquire);
    return installed ? *installed : TheMonotonicClock();
}

void InstallClock(Clock* clock)
{
    g_installedClock.store(clock, std::memory_order_release);
}

std::uint64_t VirtualClock::NowMs() const
{
    const std::lock_guard guard(m_mutex);
    return m_nowMs;
}

// The waiter stands in the list from before it looks at the time until after it woke; it takes the clock's mutex while
// it holds its own, and Advance never takes a waiter's mutex, so the two cannot block each other.
bool VirtualClock::WaitUntil(std::unique_lock<std::mutex>& lock, std::condition_variable& condition,
                             std::uint64_t deadlineMs, const std::function<bool()>& ready)
{
    std::list<Waiter>::iterator self;
    {
        const std::lock_guard guard(m_mutex);
        self = m_waiters.insert(m_waiters.end(), { &condition, deadlineMs });
    }
    bool isReady = ready();
    while (!isReady && NowMs() < deadlineMs) {
        condition.wait(lock);
        isReady = ready();
    }
    const std::lock_guard guard(m_mutex);
    m_waiters.erase(self);
    m_woken.notify_all();
    return isReady;
}

void VirtualClock::Advance(std::uint64_t milliseconds)
{
    std::unique_lock guard(m_mutex);
    m_nowMs += milliseconds;
    const auto nowMs = m_nowMs;
    const auto isDue = [nowMs](const Waiter& waiter) { return waiter.deadlineMs <= nowMs; };
    while (std::any_of(m_waiters.begin(), m_waiters.end(), isDue)) {
        // A waiter that has looked at the time but does not wait yet misses a notice, so the notice is repeated.
        for (const Waiter& waiter : m_waiters) {
            if (isDue(waiter))
                waiter.condition->notify_all();
        }
        m_woken.wait_for(guard, std::chrono::milliseconds(1));
    }
}

} // namespace cardsong::kernel

DWORD GetTickCount()
{
    return static_cast<DWORD>(cardsong::kernel::CurrentClock().NowMs());
}

void Sleep(DWORD milliseconds)
{
    const cardsong::kernel::Rest rest;
    if (milliseconds == 0) {
        std::this_thread::yield();
        return;
    }
    auto& clock = cardsong::kernel::CurrentClock();
    const auto deadlineMs = milliseconds == INFINITE ? cardsong::kernel::kNever : clock.NowMs() + milliseconds;
    std::mutex mutex;
    std::condition_variable condition;
    std::unique_lock lock(mutex);
    clock.WaitUntil(lock, condition, deadlineMs, [] { return false; });
}
