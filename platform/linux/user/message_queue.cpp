#include "platform/linux/user/message_queue.h"

#include "platform/linux/ce/kernel.h"
#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/desktop.h"
#include "platform/linux/user/frames.h"
#include "platform/linux/user/window_lifetime.h"
#include "platform/linux/user/window_tree.h"

#include <algorithm>

namespace cardsong::user {

namespace {

constexpr std::size_t kMaxPosted = 10000; // the API's own limit

void Answer(SentMessage& sent, LRESULT result)
{
    sent.result = result;
    sent.isDone = true;
    if (sent.sender != nullptr)
        Notify(*sent.sender);
}

thread_local ThreadQueue* t_queue = nullptr;

// Makes the queue when its thread first asks, and retires it when the thread ends.
class QueueOfThread {
public:
    QueueOfThread() : m_queue(std::make_shared<ThreadQueue>())
    {
        m_queue->threadId = GetCurrentThreadId();
        LockedDesktop desktop;
        std::erase_if(desktop->queues, [](const auto& known) { return known.expired(); });
        desktop->queues.push_back(m_queue);
        t_queue = m_queue.get();
    }
    ~QueueOfThread()
    {
        t_queue = nullptr;
        LockedDesktop desktop;
        RemoveWindowsOfThread(*desktop, m_queue);
        if (desktop->foregroundQueue == m_queue)
            desktop->foregroundQueue = nullptr;
        if (desktop->pointerQueue == m_queue)
            desktop->pointerQueue = nullptr;
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

void RunSent(LockedDesktop& desktop, const std::shared_ptr<SentMessage>& sent)
{
    const WindowRecord* const record = desktop->windows.Find(sent->window);
    const WNDPROC procedure = record == nullptr ? nullptr : record->procedure;
    desktop.Lock().unlock();
    LRESULT result = 0;
    if (sent->task)
        sent->task();
    else if (procedure != nullptr)
        result = procedure(sent->window, sent->message, sent->wParam, sent->lParam);
    desktop.Lock().lock();
    Answer(*sent, result);
}

bool Post(Desktop& desktop, ThreadQueue& queue, HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (queue.posted.size() >= kMaxPosted)
        return false;
    queue.posted.push_back(MakeMessage(desktop, window, message, wParam, lParam));
    Notify(queue);
    return true;
}

LRESULT SendToThread(LockedDesktop& desktop, const std::shared_ptr<ThreadQueue>& target,
                     const std::shared_ptr<SentMessage>& sent, ThreadQueue& self)
{
    target->sent.push_back(sent);
    Notify(*target);
    while (!sent->isDone) {
        {
            const AtRest rest(*desktop, self);
            kernel::CurrentClock().WaitUntil(desktop.Lock(), self.arrived, kernel::kNever,
                                             [&] { return sent->isDone || !self.sent.empty(); });
        }
        if (sent->isDone || self.sent.empty())
            continue;
        const auto next = self.sent.front();
        self.sent.pop_front();
        RunSent(desktop, next);
    }
    return sent->result;
}

} // namespace

const std::shared_ptr<ThreadQueue>& CurrentQueue()
{
    static thread_local QueueOfThread s_queue;
    return s_queue.Queue();
}

ThreadQueue* QueueIfAny()
{
    return t_queue;
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
    queue.pendingPaints = 0;
    queue.heldContexts = queue.openPaints = 0;
    queue.active = queue.focus = queue.capture = nullptr;
    queue.keys = {};
    queue.lastPress.reset();
    Notify(queue);
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

bool ServeSentMessages()
{
    const auto& queue = CurrentQueue();
    LockedDesktop desktop;
    bool served = false;
    while (!queue->sent.empty()) {
        const auto next = queue->sent.front();
        queue->sent.pop_front();
        RunSent(desktop, next);
        served = true;
    }
    return served;
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
    LockedDesktop desktop;
    if (window == nullptr)
        return Post(*desktop, *self, nullptr, message, wParam, lParam) ? TRUE : FALSE;
    if (window == HWND_BROADCAST) {
        for (const WindowRecord* record : desktop->root->children)
            Post(*desktop, *record->queue, record->handle, message, wParam, lParam);
        return TRUE;
    }
    const WindowRecord* const record = desktop.Find(window);
    if (record == nullptr || record->queue == nullptr)
        return FALSE;
    return Post(*desktop, *record->queue, window, message, wParam, lParam) ? TRUE : FALSE;
}

LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (window == HWND_BROADCAST) {
        std::vector<HWND> receivers;
        {
            LockedDesktop desktop;
            receivers = TopLevelWindows(*desktop);
        }
        for (HWND receiver : receivers)
            SendMessageW(receiver, message, wParam, lParam);
        return TRUE;
    }
    const auto& self = CurrentQueue();
    LockedDesktop desktop;
    const WindowRecord* const record = desktop.Find(window);
    if (record == nullptr || record->queue == nullptr)
        return 0;
    if (record->queue == self) {
        const WNDPROC procedure = record->procedure;
        desktop.Lock().unlock();
        return procedure(window, message, wParam, lParam);
    }
    const auto target = record->queue;
    const auto sent = std::make_shared<SentMessage>();
    sent->window = window;
    sent->message = message;
    sent->wParam = wParam;
    sent->lParam = lParam;
    sent->sender = self;
    return SendToThread(desktop, target, sent, *self);
}

void PostQuitMessage(int exitCode)
{
    const auto& self = CurrentQueue();
    LockedDesktop desktop;
    self->quitCode = exitCode;
    Notify(*self);
}

LRESULT CallWindowProcW(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return procedure == nullptr ? 0 : procedure(window, message, wParam, lParam);
}
