#include "platform/linux/user/input_queue.h"

#include "platform/linux/ce/kernel.h"
#include "platform/linux/user/desktop.h"
#include "platform/linux/user/foreground.h"
#include "platform/linux/user/visible_region.h"
#include "platform/linux/user/window_tree.h"

#include <algorithm>
#include <cstdlib>

namespace cardsong::user {

namespace {

constexpr std::uint64_t kDoubleClickMs = 500;
constexpr int kDoubleClickPx = 4; // how far the second tap may lie from the first
constexpr BYTE kKeyIsDown = 0x80;
constexpr BYTE kKeyIsToggled = 0x01;
constexpr UINT kSystemKeyOffset = WM_SYSKEYDOWN - WM_KEYDOWN;

bool IsKey(const InputEvent& event)
{
    return event.kind == InputKind::KeyDown || event.kind == InputKind::KeyUp;
}

bool CouldMatch(const InputEvent& event, const MessageFilter& filter)
{
    switch (event.kind) {
    case InputKind::PointerMove: return filter.AllowsMessage(WM_MOUSEMOVE);
    case InputKind::PointerDown: return filter.AllowsMessage(WM_LBUTTONDOWN) || filter.AllowsMessage(WM_LBUTTONDBLCLK);
    case InputKind::PointerUp: return filter.AllowsMessage(WM_LBUTTONUP);
    case InputKind::KeyDown: return filter.AllowsMessage(WM_KEYDOWN) || filter.AllowsMessage(WM_SYSKEYDOWN);
    case InputKind::KeyUp: return filter.AllowsMessage(WM_KEYUP) || filter.AllowsMessage(WM_SYSKEYUP);
    }
    return false;
}

// The windows under the point, innermost and topmost first. A disabled child is as if it were not there.
void ListHits(const WindowRecord& parent, POINT at, std::vector<HWND>& hits)
{
    for (const WindowRecord* child : parent.children) {
        const RECT& rect = child->rect;
        const bool isOutside = at.x < rect.left || at.x >= rect.right || at.y < rect.top || at.y >= rect.bottom;
        if (isOutside || !child->Has(WS_VISIBLE) || child->Has(WS_CHILD | WS_DISABLED))
            continue;
        if (!child->Has(WS_DISABLED))
            ListHits(*child, { at.x - rect.left, at.y - rect.top }, hits);
        hits.push_back(child->handle);
    }
}

struct Target {
    HWND window = nullptr;
    std::shared_ptr<ThreadQueue> queue;
    bool isDisabled = false;
};

Target TargetOf(HWND window)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop->windows.Find(window);
    if (record == nullptr)
        return {};
    return { window, record->queue, record->Has(WS_DISABLED) };
}

// Asks the windows under the point, from the top, until one does not call itself transparent.
Target HitTest(const std::shared_ptr<ThreadQueue>& self, POINT at)
{
    std::vector<HWND> hits;
    {
        LockedDesktop desktop;
        ListHits(*desktop->root, at, hits);
    }
    for (HWND window : hits) {
        const auto target = TargetOf(window);
        if (target.window == nullptr)
            continue;
        if (target.isDisabled)
            return {};
        if (target.queue != self)
            return target;
        const LRESULT part = SendMessageW(window, WM_NCHITTEST, 0, MAKELPARAM(at.x, at.y));
        if (part == HTCLIENT)
            return target;
        if (part != HTTRANSPARENT)
            return {};
    }
    return {};
}

Target FindTarget(const std::shared_ptr<ThreadQueue>& queue, const InputEvent& event)
{
    HWND window = nullptr;
    {
        LockedDesktop desktop;
        window = IsKey(event) ? (queue->focus != nullptr ? queue->focus : queue->active) : queue->capture;
    }
    if (window != nullptr || IsKey(event))
        return TargetOf(window);
    return HitTest(queue, event.at);
}

bool IsDoubleClick(const Desktop& desktop, const ThreadQueue& queue, HWND window, const InputEvent& event)
{
    if (!queue.lastPress.has_value() || queue.lastPress->window != window)
        return false;
    const WindowRecord* const record = desktop.windows.Find(window);
    if (record == nullptr || (record->windowClass->style & CS_DBLCLKS) == 0)
        return false;
    const Press& last = *queue.lastPress;
    return event.timeMs - last.timeMs <= kDoubleClickMs && std::abs(event.at.x - last.at.x) <= kDoubleClickPx &&
           std::abs(event.at.y - last.at.y) <= kDoubleClickPx;
}

MSG PointerMessage(const Desktop& desktop, const ThreadQueue& queue, HWND window, const InputEvent& event)
{
    UINT message = WM_MOUSEMOVE;
    if (event.kind == InputKind::PointerUp)
        message = WM_LBUTTONUP;
    if (event.kind == InputKind::PointerDown)
        message = IsDoubleClick(desktop, queue, window, event) ? WM_LBUTTONDBLCLK : WM_LBUTTONDOWN;
    const WindowRecord* const record = desktop.windows.Find(window);
    const POINT origin = record == nullptr ? POINT{} : ScreenOrigin(*record);
    const WPARAM buttons = event.isPointerDown ? MK_LBUTTON : 0;
    return { window, message, buttons, MAKELPARAM(event.at.x - origin.x, event.at.y - origin.y), 0, event.at };
}

MSG KeyMessage(const ThreadQueue& queue, HWND window, const InputEvent& event)
{
    UINT message = event.kind == InputKind::KeyDown ? WM_KEYDOWN : WM_KEYUP;
    if (queue.focus == nullptr)
        message += kSystemKeyOffset;
    int flags = event.wasDown ? KF_REPEAT : 0;
    if (event.kind == InputKind::KeyUp)
        flags = KF_REPEAT | KF_UP;
    constexpr WORD kStrokes = 1;
    return { window, message, event.key, MAKELPARAM(kStrokes, flags), 0, event.at };
}

MSG MakeInputMessage(const Desktop& desktop, const ThreadQueue& queue, HWND window, const InputEvent& event)
{
    MSG message = IsKey(event) ? KeyMessage(queue, window, event) : PointerMessage(desktop, queue, window, event);
    message.time = static_cast<DWORD>(event.timeMs);
    return message;
}

void RememberKey(ThreadQueue& queue, const InputEvent& event)
{
    BYTE& state = queue.keys[event.key];
    if (event.kind == InputKind::KeyUp) {
        state = static_cast<BYTE>(state & ~kKeyIsDown);
        return;
    }
    if ((state & kKeyIsDown) == 0)
        state ^= kKeyIsToggled;
    state |= kKeyIsDown;
}

// A third quick tap is a first one again.
void RememberPress(ThreadQueue& queue, const MSG& message, const InputEvent& event)
{
    queue.lastPress.reset();
    if (message.message == WM_LBUTTONDOWN)
        queue.lastPress = Press{ message.hwnd, event.at, event.timeMs };
}

void ActivateByTap(HWND window)
{
    HWND topLevel = nullptr;
    {
        LockedDesktop desktop;
        WindowRecord* const record = desktop->windows.Find(window);
        const WindowRecord* const top = record == nullptr ? nullptr : TopLevelOf(record);
        if (top == nullptr || top->Has(WS_DISABLED) || (top->exStyle & WS_EX_NOACTIVATE) != 0)
            return;
        topLevel = top->handle;
    }
    TakeForeground(topLevel, WA_CLICKACTIVE);
}

// Takes the event out of the queue; it may have moved while windows were asked.
bool RemoveEvent(ThreadQueue& queue, std::uint64_t number)
{
    return std::erase_if(queue.input, [&](const InputEvent& event) { return event.number == number; }) != 0;
}

std::optional<InputEvent> FirstMatching(ThreadQueue& queue, const MessageFilter& filter, std::uint64_t after)
{
    LockedDesktop desktop;
    for (const InputEvent& event : queue.input)
        if (event.number > after && CouldMatch(event, filter))
            return event;
    return std::nullopt;
}

// The message, with its effects if it is removed; nothing when the filter does not want it after all.
std::optional<MSG> Deliver(ThreadQueue& queue, HWND window, const InputEvent& event, const MessageFilter& filter,
                           bool remove)
{
    LockedDesktop desktop;
    const MSG message = MakeInputMessage(*desktop, queue, window, event);
    if (!filter.AllowsMessage(message.message) || !filter.AllowsWindow(*desktop, window))
        return std::nullopt;
    if (!remove)
        return message;
    RemoveEvent(queue, event.number);
    if (IsKey(event))
        RememberKey(queue, event);
    if (event.kind == InputKind::PointerDown)
        RememberPress(queue, message, event);
    return message;
}

// What is meant for no window of this thread leaves the queue, to the thread that has the window if there is one.
void PassOn(ThreadQueue& queue, const InputEvent& event, const Target& target)
{
    LockedDesktop desktop;
    if (!RemoveEvent(queue, event.number))
        return;
    if (IsKey(event))
        RememberKey(queue, event);
    if (target.queue == nullptr || target.queue->isRetired)
        return;
    auto& input = target.queue->input;
    const auto isEarlier = [](const InputEvent& a, const InputEvent& b) { return a.number < b.number; };
    input.insert(std::upper_bound(input.begin(), input.end(), event, isEarlier), event);
    if (desktop->pointerDown && !IsKey(event))
        desktop->pointerQueue = target.queue;
    Notify(*target.queue);
}

} // namespace

std::optional<MSG> TakeInput(const std::shared_ptr<ThreadQueue>& queue, const MessageFilter& filter, bool remove)
{
    std::uint64_t looked = 0;
    while (const auto event = FirstMatching(*queue, filter, looked)) {
        looked = event->number;
        const auto target = FindTarget(queue, *event);
        if (target.queue != queue) {
            PassOn(*queue, *event, target);
            continue;
        }
        const auto message = Deliver(*queue, target.window, *event, filter, remove);
        if (!message.has_value())
            continue;
        if (remove && event->kind == InputKind::PointerDown)
            ActivateByTap(target.window);
        return message;
    }
    return std::nullopt;
}

} // namespace cardsong::user

using namespace cardsong::user;

SHORT GetKeyState(int key)
{
    const auto& queue = CurrentQueue();
    LockedDesktop desktop;
    const auto state = key < 0 || key > 255 ? 0 : queue->keys[static_cast<std::size_t>(key)];
    const int isDown = (state & kKeyIsDown) != 0 ? 0xFF80 : 0;
    return static_cast<SHORT>(static_cast<USHORT>(isDown | (state & kKeyIsToggled)));
}
