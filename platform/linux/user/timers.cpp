#include "platform/linux/user/timers.h"

#include "platform/linux/ce/kernel.h"
#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/desktop.h"

#include <algorithm>

namespace cardsong::user {

namespace {

constexpr std::uint64_t kMinPeriodMs = 10;
// Ticks that come so soon after each other wake the thread once, for the later one: the API's own ticks are as coarse.
constexpr std::uint64_t kTogetherMs = 10;
constexpr std::uint64_t kMaxPeriodMs = 0x7FFFFFFF;
constexpr UINT_PTR kFirstFreeId = 0x7FFF; // the thread timers' ids count down from here

Timer* FindTimer(ThreadQueue& queue, HWND window, UINT_PTR id)
{
    const auto found = std::find_if(queue.timers.begin(), queue.timers.end(),
                                    [&](const Timer& timer) { return timer.window == window && timer.id == id; });
    return found == queue.timers.end() ? nullptr : &*found;
}

UINT_PTR FreeId(ThreadQueue& queue)
{
    UINT_PTR id = kFirstFreeId;
    while (FindTimer(queue, nullptr, id) != nullptr)
        --id;
    return id;
}

} // namespace

std::optional<MSG> TakeDueTick(const Desktop& desktop, ThreadQueue& queue, const MessageFilter& filter)
{
    if (!filter.AllowsMessage(WM_TIMER))
        return std::nullopt;
    const auto nowMs = kernel::CurrentClock().NowMs();
    Timer* first = nullptr;
    for (Timer& timer : queue.timers)
        if (timer.dueMs <= nowMs && filter.AllowsWindow(desktop, timer.window))
            if (first == nullptr || timer.dueMs < first->dueMs)
                first = &timer;
    if (first == nullptr)
        return std::nullopt;
    first->dueMs += ((nowMs - first->dueMs) / first->periodMs + 1) * first->periodMs;
    return MakeMessage(desktop, first->window, WM_TIMER, first->id, reinterpret_cast<LPARAM>(first->procedure));
}

std::uint64_t NextTickMs(const Desktop& desktop, const ThreadQueue& queue, const MessageFilter& filter)
{
    auto nextMs = kernel::kNever;
    if (!filter.AllowsMessage(WM_TIMER))
        return nextMs;
    for (const Timer& timer : queue.timers)
        if (filter.AllowsWindow(desktop, timer.window))
            nextMs = std::min(nextMs, timer.dueMs);
    auto togetherMs = nextMs;
    for (const Timer& timer : queue.timers)
        if (filter.AllowsWindow(desktop, timer.window) && timer.dueMs - nextMs <= kTogetherMs)
            togetherMs = std::max(togetherMs, timer.dueMs);
    return togetherMs;
}

} // namespace cardsong::user

using namespace cardsong::user;

UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT periodMs, TIMERPROC procedure)
{
    auto queue = CurrentQueue();
    LockedDesktop desktop;
    if (window != nullptr) {
        const WindowRecord* const record = desktop.Find(window);
        if (record == nullptr || record->queue == nullptr)
            return 0;
        queue = record->queue;
    }
    Timer* timer = FindTimer(*queue, window, id);
    if (timer == nullptr) {
        const auto newId = window == nullptr ? FreeId(*queue) : id;
        queue->timers.push_back({ window, newId, 0, 0, nullptr });
        timer = &queue->timers.back();
    }
    timer->periodMs = std::clamp<std::uint64_t>(periodMs, kMinPeriodMs, kMaxPeriodMs);
    timer->dueMs = cardsong::kernel::CurrentClock().NowMs() + timer->periodMs;
    timer->procedure = procedure;
    Notify(*queue);
    return timer->id == 0 ? 1 : timer->id; // success of a timer that its window numbered 0
}

BOOL KillTimer(HWND window, UINT_PTR id)
{
    auto queue = CurrentQueue();
    LockedDesktop desktop;
    if (window != nullptr) {
        const WindowRecord* const record = desktop.Find(window);
        if (record == nullptr || record->queue == nullptr)
            return FALSE;
        queue = record->queue;
    }
    const auto removed =
        std::erase_if(queue->timers, [&](const Timer& timer) { return timer.window == window && timer.id == id; });
    if (removed == 0)
        SetLastError(ERROR_INVALID_PARAMETER);
    return removed == 0 ? FALSE : TRUE;
}
