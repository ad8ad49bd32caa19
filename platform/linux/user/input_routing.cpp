#include "platform/linux/user/input_routing.h"

#include "platform/linux/user/key_state.h"

#include <algorithm>

namespace cardsong::user {

namespace {

// The thread of the topmost window under the point. The thread finds the window itself when it takes the event.
std::shared_ptr<ThreadQueue> QueueAt(const Desktop& desktop, POINT at)
{
    for (const WindowRecord* window : desktop.root->children) {
        const RECT& rect = window->rect;
        if (window->Has(WS_VISIBLE) && at.x >= rect.left && at.x < rect.right && at.y >= rect.top && at.y < rect.bottom)
            return window->queue;
    }
    return nullptr;
}

} // namespace

HWND ProgramWindow(const Desktop& desktop)
{
    for (const WindowRecord* window : desktop.root->children)
        if (window->queue->runsProgram && window->owner == nullptr && window->Has(WS_VISIBLE))
            return window->handle;
    return nullptr;
}

std::shared_ptr<ThreadQueue> PointerReceiver(const Desktop& desktop, POINT at)
{
    if (desktop.pointerQueue != nullptr)
        return desktop.pointerQueue;
    if (desktop.foregroundQueue != nullptr && desktop.foregroundQueue->capture != nullptr)
        return desktop.foregroundQueue;
    return QueueAt(desktop, at);
}

Target FindTarget(const std::shared_ptr<ThreadQueue>& queue, const InputEvent& event)
{
    HWND window = nullptr;
    {
        LockedDesktop desktop;
        if (event.isForProgram)
            window = ProgramWindow(*desktop);
        else
            window = event.FollowsFocus() ? (queue->focus != nullptr ? queue->focus : queue->active) : queue->capture;
    }
    if (window == nullptr && event.isForProgram)
        return { nullptr, queue }; // it stays until there is one
    if (window != nullptr || event.FollowsFocus())
        return TargetOf(window);
    return HitTest(queue, event.at, event.handedTo);
}

bool RemoveEvent(ThreadQueue& queue, std::uint64_t number)
{
    return std::erase_if(queue.input, [&](const InputEvent& event) { return event.number == number; }) != 0;
}

void PassOn(ThreadQueue& queue, const InputEvent& event, const Target& target)
{
    LockedDesktop desktop;
    if (!RemoveEvent(queue, event.number))
        return;
    if (event.IsKey())
        RememberKey(queue, event);
    if (target.queue == nullptr || target.queue->isRetired)
        return;
    auto& input = target.queue->input;
    const auto isEarlier = [](const InputEvent& a, const InputEvent& b) { return a.number < b.number; };
    const auto place = input.insert(std::upper_bound(input.begin(), input.end(), event, isEarlier), event);
    place->handedTo = target.window;
    if (desktop->pointerDown && !event.FollowsFocus())
        desktop->pointerQueue = target.queue;
    Notify(*target.queue);
}

} // namespace cardsong::user
