// In which order a thread gets its messages: sent, posted, quit, input, paints, ticks.
#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/desktop.h"
#include "platform/linux/user/frames.h"
#include "platform/linux/user/input_queue.h"
#include "platform/linux/user/message_filter.h"
#include "platform/linux/user/timers.h"
#include "platform/linux/user/update_region.h"

namespace cardsong::user {

namespace {

constexpr UINT kAllKinds = PM_QS_INPUT | PM_QS_POSTMESSAGE | PM_QS_PAINT | PM_QS_SENDMESSAGE;

struct Search {
    MessageFilter filter;
    bool remove = true;
    UINT kinds = kAllKinds; // PM_QS_... bits

    bool Wants(UINT kind) const { return (kinds & kind) != 0; }
};

std::optional<MSG> TakePosted(const Desktop& desktop, ThreadQueue& queue, const Search& search)
{
    for (auto message = queue.posted.begin(); message != queue.posted.end(); ++message) {
        if (!search.filter.AllowsMessage(message->message) || !search.filter.AllowsWindow(desktop, message->hwnd))
            continue;
        const MSG found = *message;
        if (search.remove)
            queue.posted.erase(message);
        return found;
    }
    return std::nullopt;
}

std::optional<MSG> TakeQuit(const Desktop& desktop, ThreadQueue& queue, const Search& search)
{
    if (!queue.quitCode.has_value() || !queue.posted.empty())
        return std::nullopt;
    const auto code = static_cast<WPARAM>(*queue.quitCode);
    if (search.remove)
        queue.quitCode.reset();
    return MakeMessage(desktop, nullptr, WM_QUIT, code, 0);
}

// A tick that was looked at and left becomes a posted message, so that it stays ahead of what is posted later.
std::optional<MSG> TakeTick(const Desktop& desktop, ThreadQueue& queue, const Search& search)
{
    const auto tick = TakeDueTick(desktop, queue, search.filter);
    if (tick.has_value() && !search.remove)
        queue.posted.push_back(*tick);
    return tick;
}

std::optional<MSG> TakePostedOrQuit(ThreadQueue& queue, const Search& search)
{
    LockedDesktop desktop;
    queue.hasNews = false;
    if (!search.Wants(PM_QS_POSTMESSAGE))
        return std::nullopt;
    if (const auto message = TakePosted(*desktop, queue, search))
        return message;
    return TakeQuit(*desktop, queue, search);
}

std::optional<MSG> TakePaintOrTick(const std::shared_ptr<ThreadQueue>& queue, const Search& search)
{
    LockedDesktop desktop;
    if (search.Wants(PM_QS_PAINT) && search.filter.AllowsMessage(WM_PAINT)) {
        const auto allows = [&](HWND window) { return search.filter.AllowsWindow(*desktop, window); };
        if (const HWND window = FindWindowToPaint(*desktop, queue, allows))
            return MakeMessage(*desktop, window, WM_PAINT, 0, 0);
    }
    if (!search.Wants(PM_QS_POSTMESSAGE))
        return std::nullopt;
    return TakeTick(*desktop, *queue, search);
}

std::optional<MSG> Retrieve(const std::shared_ptr<ThreadQueue>& queue, Search search, bool isMasked)
{
    if (ServeSentMessages() && isMasked)
        return std::nullopt;
    if (const auto message = TakePostedOrQuit(*queue, search))
        return message;
    if (search.Wants(PM_QS_INPUT))
        if (const auto message = TakeInput(queue, search.filter, search.remove))
            return message;
    ServeSentMessages();
    return TakePaintOrTick(queue, search);
}

// False when `window` is no window. The value -1 asks for the thread's own messages.
bool MakeFilter(HWND window, UINT first, UINT last, MessageFilter& filter)
{
    filter.first = first;
    filter.last = last;
    filter.onlyThread = window == reinterpret_cast<HWND>(static_cast<LONG_PTR>(-1));
    if (window == nullptr || filter.onlyThread)
        return true;
    filter.window = window;
    LockedDesktop desktop;
    return desktop.Find(window) != nullptr;
}

void WaitForNews(const std::shared_ptr<ThreadQueue>& queue, const MessageFilter& filter)
{
    LockedDesktop desktop;
    const AtRest rest(*desktop, *queue);
    const auto deadlineMs = NextTickMs(*desktop, *queue, filter);
    kernel::CurrentClock().WaitUntil(desktop.Lock(), queue->arrived, deadlineMs, [&] { return queue->hasNews; });
}

} // namespace

} // namespace cardsong::user

using namespace cardsong::user;

BOOL GetMessageW(LPMSG message, HWND window, UINT first, UINT last)
{
    const auto queue = CurrentQueue();
    Search search;
    if (!MakeFilter(window, first, last, search.filter))
        return -1;
    while (true) {
        if (const auto found = Retrieve(queue, search, false)) {
            *message = *found;
            return found->message == WM_QUIT ? FALSE : TRUE;
        }
        WaitForNews(queue, search.filter);
    }
}

BOOL PeekMessageW(LPMSG message, HWND window, UINT first, UINT last, UINT remove)
{
    const auto queue = CurrentQueue();
    Search search;
    if (!MakeFilter(window, first, last, search.filter))
        return FALSE;
    search.remove = (remove & PM_REMOVE) != 0;
    const UINT kinds = remove & kAllKinds;
    if (kinds != 0)
        search.kinds = kinds;
    if (const auto found = Retrieve(queue, search, kinds != 0)) {
        *message = *found;
        return TRUE;
    }
    LockedDesktop desktop;
    ShowFrame(*desktop, *queue);
    return FALSE;
}
