#include "platform/linux/user/input_queue.h"

#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/active_window.h"
#include "platform/linux/user/desktop.h"
#include "platform/linux/user/double_click.h"
#include "platform/linux/user/foreground.h"
#include "platform/linux/user/input_routing.h"
#include "platform/linux/user/key_state.h"
#include "platform/linux/user/visible_region.h"
#include "platform/linux/user/window_tree.h"

namespace cardsong::user {

namespace {

constexpr std::size_t kMaxInput = 256; // a thread that never looks loses what comes later
constexpr UINT kSystemKeyOffset = WM_SYSKEYDOWN - WM_KEYDOWN;

// Numbers the event and notes when it came.
void Stamp(InputEvent& event)
{
    static std::uint64_t s_number = 0; // guarded by the desktop's lock
    event.number = ++s_number;
    event.timeMs = kernel::CurrentClock().NowMs();
}

bool CouldMatch(const InputEvent& event, const MessageFilter& filter)
{
    switch (event.kind) {
    case InputKind::PointerMove: return filter.AllowsMessage(WM_MOUSEMOVE);
    case InputKind::PointerDown: return filter.AllowsMessage(WM_LBUTTONDOWN) || filter.AllowsMessage(WM_LBUTTONDBLCLK);
    case InputKind::PointerUp: return filter.AllowsMessage(WM_LBUTTONUP);
    case InputKind::KeyDown: return filter.AllowsMessage(WM_KEYDOWN) || filter.AllowsMessage(WM_SYSKEYDOWN);
    case InputKind::KeyUp: return filter.AllowsMessage(WM_KEYUP) || filter.AllowsMessage(WM_SYSKEYUP);
    case InputKind::Command: return filter.AllowsMessage(WM_COMMAND);
    }
    return false;
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
    const WORD strokes = event.isForProgram ? 0 : 1; // no hand struck it
    return { window, message, event.key, MAKELPARAM(strokes, flags), 0, event.at };
}

MSG MakeInputMessage(const Desktop& desktop, const ThreadQueue& queue, HWND window, const InputEvent& event)
{
    if (event.kind == InputKind::Command)
        return { window, WM_COMMAND, event.key, 0, static_cast<DWORD>(event.timeMs), event.at };
    MSG message = event.IsKey() ? KeyMessage(queue, window, event) : PointerMessage(desktop, queue, window, event);
    message.time = static_cast<DWORD>(event.timeMs);
    return message;
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

std::optional<InputEvent> FirstMatching(ThreadQueue& queue, const MessageFilter& filter, std::uint64_t after)
{
    LockedDesktop desktop;
    for (const InputEvent& event : queue.input)
        if (event.number > after && CouldMatch(event, filter))
            return event;
    return std::nullopt;
}

// Null for a command that nobody takes: it is gone.
HWND ReceiverOf(ThreadQueue& queue, const InputEvent& event, const Target& target)
{
    if (event.kind != InputKind::Command)
        return target.window;
    LockedDesktop desktop;
    const HWND window = CommandReceiver(*desktop, queue, event);
    if (window == nullptr)
        RemoveEvent(queue, event.number);
    return window;
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
    if (event.IsKey())
        RememberKey(queue, event);
    if (event.kind == InputKind::PointerDown)
        RememberPress(queue, message, event);
    return message;
}

} // namespace

void Enqueue(ThreadQueue& queue, InputEvent event)
{
    Stamp(event);
    auto& input = queue.input;
    const bool continuesMove =
        event.kind == InputKind::PointerMove && !input.empty() && input.back().kind == InputKind::PointerMove;
    if (continuesMove)
        input.pop_back();
    if (input.size() < kMaxInput)
        input.push_back(event);
    Notify(queue);
}

void KeepEarlyKey(Desktop& desktop, InputEvent event)
{
    if (desktop.earlyKeys.size() >= kMaxInput)
        return;
    Stamp(event);
    desktop.earlyKeys.push_back(event);
}

void PassExitKeyOn(Desktop& desktop, const ThreadQueue& queue)
{
    for (const InputEvent& event : queue.input) {
        if (!event.IsKey() || event.key != VK_F24)
            continue;
        if (desktop.foregroundQueue != nullptr)
            Enqueue(*desktop.foregroundQueue, event);
        else
            KeepEarlyKey(desktop, event);
    }
}

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
        const HWND window = ReceiverOf(*queue, *event, target);
        if (window == nullptr)
            continue;
        const auto message = Deliver(*queue, window, *event, filter, remove);
        if (!message.has_value())
            continue;
        if (remove && event->kind == InputKind::PointerDown)
            ActivateByTap(window);
        return message;
    }
    return std::nullopt;
}

} // namespace cardsong::user
