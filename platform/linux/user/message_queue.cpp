#include "platform/linux/user/message_queue.h"

#include "platform/linux/ce/kernel.h"
#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/desktop.h"
#include "platform/linux/user/foreign_windows.h"
#include "platform/linux/user/frames.h"
#include "platform/linux/user/input_queue.h"
#include "platform/linux/user/window_lifetime.h"

#include <algorithm>
#include <unistd.h>

namespace cardsong::user {

namespace {

constexpr std::size_t kMaxPosted = 10000; // the API's own limit

thread_local ThreadQueue* t_queue = nullptr;
thread_local bool t_isEnding = false;

// Makes the queue when its thread first asks, and retires it when the thread ends.
class QueueOfThread {
public:
    QueueOfThread() : m_queue(std::make_shared<ThreadQueue>())
    {
        m_queue->threadId = GetCurrentThreadId();
        m_queue->runsProgram = gettid() == getpid();
        LockedDesktop desktop;
        std::erase_if(desktop->queues, [](const auto& known) { return known.expired(); });
        desktop->queues.push_back(m_queue);
        t_queue = m_queue.get();
    }
    ~QueueOfThread()
    {
        t_queue = nullptr;
        t_isEnding = true;
        LockedDesktop desktop;
        RemoveWindowsOfThread(*desktop, m_queue);
        if (desktop->foregroundQueue == m_queue)
            desktop->foregroundQueue = nullptr;
        if (desktop->pointerQueue == m_queue)
            desktop->pointerQueue = nullptr;
        PassExitKeyOn(*desktop, *m_queue);
        ClearQueue(*m_queue);
        m_queue->isRetired = true;
        ShowFrame(*desktop, *m_queue);
    }
    QueueOfThread(const QueueOfThread&) = delete;
    QueueOfThread& operator=(const QueueOfThread&) = delete;
    const std::shared_ptr<ThreadQueue>& Queue() const { return m_queue; }

private:
    std::shared_ptr<ThreadQueue> m_queue;
};

BOOL Broadcast(UINT message, WPARAM wParam, LPARAM lParam)
{
    {
        LockedDesktop desktop;
        for (const WindowRecord* record : desktop->root->children)
            PostToQueue(*desktop, *record->queue, record->handle, message, wParam, lParam);
    }
    BroadcastToOtherPrograms(message, wParam, lParam);
    return TRUE;
}

} // namespace

bool PostToQueue(Desktop& desktop, ThreadQueue& queue, HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (queue.posted.size() >= kMaxPosted)
        return false;
    queue.posted.push_back(MakeMessage(desktop, window, message, wParam, lParam));
    Notify(queue);
    return true;
}

const std::shared_ptr<ThreadQueue>& CurrentQueue()
{
    static thread_local QueueOfThread s_queue;
    return s_queue.Queue();
}

ThreadQueue* QueueIfAny()
{
    return t_queue;
}

ThreadQueue* QueueUnlessEnding()
{
    return t_isEnding ? nullptr : CurrentQueue().get();
}

void ClearQueue(ThreadQueue& queue)
{
    for (const auto& sent : queue.sent)
        Answer(*sent, 0);
    queue.sent.clear();
    queue.posted.clear();
    queue.quitCode.reset();
    queue.input.clear();
    queue.timers.clear();
    queue.heldContexts = queue.openPaints = 0;
    queue.active = queue.focus = queue.capture = nullptr;
    queue.keys = {};
    queue.lastPress.reset();
    Notify(queue);
}

void Answer(SentMessage& sent, LRESULT result)
{
    sent.result = result;
    sent.isDone = true;
    if (sent.sender != nullptr)
        Notify(*sent.sender);
}

void Notify(ThreadQueue& queue)
{
    queue.hasNews = true;
    queue.arrived.notify_all();
}

void QueueTask(Desktop&, const std::shared_ptr<ThreadQueue>& queue, std::function<void()> task)
{
    if (queue->isRetired)
        return;
    const auto sent = std::make_shared<SentMessage>();
    sent->task = std::move(task);
    queue->sent.push_back(sent);
    Notify(*queue);
}

void ForgetWindow(ThreadQueue& queue, HWND window)
{
    std::erase_if(queue.posted, [&](const MSG& message) { return message.hwnd == window; });
    std::erase_if(queue.timers, [&](const Timer& timer) { return timer.window == window; });
    for (HWND* held : { &queue.active, &queue.focus, &queue.capture })
        if (*held == window)
            *held = nullptr;
}

MSG MakeMessage(const Desktop& desktop, HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto now = static_cast<DWORD>(kernel::CurrentClock().NowMs());
    return { window, message, wParam, lParam, now, desktop.pointer };
}

} // namespace cardsong::user

using namespace cardsong::user;

BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto& self = CurrentQueue();
    if (window == HWND_BROADCAST)
        return Broadcast(message, wParam, lParam);
    LockedDesktop desktop;
    if (window == nullptr)
        return PostToQueue(*desktop, *self, nullptr, message, wParam, lParam) ? TRUE : FALSE;
    const WindowRecord* const record = desktop->windows.Find(window);
    if (record != nullptr && record->queue != nullptr)
        return PostToQueue(*desktop, *record->queue, window, message, wParam, lParam) ? TRUE : FALSE;
    desktop.Lock().unlock();
    return PostToForeignWindow(window, message, wParam, lParam) ? TRUE : FALSE;
}

void PostQuitMessage(int exitCode)
{
    const auto& self = CurrentQueue();
    LockedDesktop desktop;
    self->quitCode = exitCode;
    Notify(*self);
}
