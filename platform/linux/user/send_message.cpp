// Messages that wait for their answer, within a thread and across threads.
#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/desktop.h"
#include "platform/linux/user/foreign_windows.h"
#include "platform/linux/user/frames.h"
#include "platform/linux/user/window_tree.h"

namespace cardsong::user {

namespace {

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

} // namespace cardsong::user

using namespace cardsong::user;

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
        BroadcastToOtherPrograms(message, wParam, lParam); // whose answers nobody waits for
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
