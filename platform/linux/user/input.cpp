#include "platform/linux/user/input.h"

#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/desktop.h"
#include "platform/linux/user/input_routing.h"

namespace cardsong::user {

namespace {

constexpr std::size_t kMaxInput = 256; // a thread that never looks loses what comes later

// Numbers the event and notes when it came.
void Stamp(InputEvent& event)
{
    static std::uint64_t s_number = 0; // guarded by the desktop's lock
    event.number = ++s_number;
    event.timeMs = kernel::CurrentClock().NowMs();
}

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

void Point(InputKind kind, POINT at)
{
    LockedDesktop desktop;
    desktop->pointer = at;
    const auto queue = PointerReceiver(*desktop, at);
    if (kind != InputKind::PointerMove)
        desktop->pointerDown = kind == InputKind::PointerDown;
    desktop->pointerQueue = desktop->pointerDown ? queue : nullptr;
    if (queue == nullptr)
        return;
    InputEvent event;
    event.kind = kind;
    event.at = at;
    event.isPointerDown = desktop->pointerDown;
    Enqueue(*queue, event);
}

void Strike(InputKind kind, UINT key)
{
    LockedDesktop desktop;
    if (key == 0 || key > 255 || !desktop->displayActive)
        return;
    InputEvent event;
    event.kind = kind;
    event.at = desktop->pointer;
    event.key = key;
    event.wasDown = desktop->keysDown[key];
    desktop->keysDown[key] = kind == InputKind::KeyDown;
    if (desktop->foregroundQueue != nullptr) {
        Enqueue(*desktop->foregroundQueue, event);
    } else if (desktop->foreground == nullptr && desktop->earlyKeys.size() < kMaxInput) {
        Stamp(event);
        desktop->earlyKeys.push_back(event);
    }
}

} // namespace

void PointerDown(POINT at)
{
    Point(InputKind::PointerDown, at);
}

void PointerMove(POINT at)
{
    Point(InputKind::PointerMove, at);
}

void PointerUp(POINT at)
{
    Point(InputKind::PointerUp, at);
}

void KeyDown(UINT key)
{
    Strike(InputKind::KeyDown, key);
}

void KeyUp(UINT key)
{
    Strike(InputKind::KeyUp, key);
}

void PressExitKey()
{
    SetDisplayActive(true); // an inactive display's keys are meant for another program
    KeyDown(VK_F24);
    KeyUp(VK_F24);
}

} // namespace cardsong::user
