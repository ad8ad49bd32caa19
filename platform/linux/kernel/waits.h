// What a thread can wait for: an object that is signalled and may be taken by the waiter. Knows no kind of object.
#pragma once

#include "platform/linux/kernel/handles.h"

#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace cardsong::kernel {

class WaitableObject : public KernelObject {
public:
    // Waits until the object is signalled, and takes the signal where the kind is taken by one waiter.
    // WAIT_OBJECT_0 or WAIT_TIMEOUT; `milliseconds` may be 0 or INFINITE.
    DWORD Wait(DWORD milliseconds);

protected:
    // Called with m_mutex held. `ticket` is what BeginWait answered.
    virtual bool TryTake(std::uint64_t ticket) = 0;
    virtual std::uint64_t BeginWait() { return 0; }
    virtual void EndWait() {}

    std::mutex m_mutex;
    std::condition_variable m_changed;
};

// Signalled once, for good: the end of a thread or a process.
class CompletionObject final : public WaitableObject {
public:
    void Complete();

private:
    bool TryTake(std::uint64_t) override { return m_isComplete; }

    bool m_isComplete = false;
};

} // namespace cardsong::kernel
