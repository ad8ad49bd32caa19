#include "platform/linux/kernel/waits.h"

#include "platform/linux/kernel/clock.h"
#include "platform/linux/kernel/rest.h"

#include <optional>

namespace cardsong::kernel {

DWORD WaitableObject::Wait(DWORD milliseconds)
{
    auto& clock = CurrentClock();
    std::optional<Rest> rest; // begins and ends without the lock
    std::unique_lock lock(m_mutex);
    const auto ticket = BeginWait();
    const auto ready = [this, ticket] { return TryTake(ticket); };
    bool isTaken = ready();
    if (!isTaken && milliseconds != 0) {
        const auto deadlineMs = milliseconds == INFINITE ? kNever : clock.NowMs() + milliseconds;
        lock.unlock();
        rest.emplace();
        lock.lock();
        isTaken = clock.WaitUntil(lock, m_changed, deadlineMs, ready);
    }
    EndWait();
    return isTaken ? WAIT_OBJECT_0 : WAIT_TIMEOUT;
}

void CompletionObject::Complete()
{
    const std::lock_guard lock(m_mutex);
    m_isComplete = true;
    m_changed.notify_all();
}

} // namespace cardsong::kernel

DWORD WaitForSingleObject(HANDLE object, DWORD milliseconds)
{
    const auto waitable = cardsong::kernel::ObjectAs<cardsong::kernel::WaitableObject>(object);
    return waitable ? waitable->Wait(milliseconds) : WAIT_FAILED;
}
