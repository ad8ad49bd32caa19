#include "platform/linux/user/focus_and_activation.h"

#include "platform/linux/user/input.h"
#include "platform/linux/user/window_position.h"
#include "platform/linux/user/window_tree.h"

namespace cardsong::user {

namespace {

bool MayBecomeActive(const WindowRecord& record)
{
    return record.Has(WS_VISIBLE) && !record.Has(WS_DISABLED) && (record.exStyle & WS_EX_NOACTIVATE) == 0 &&
           !record.isBeingDestroyed;
}

// Who becomes active after `window`: its owner, or the first top-level window that can be.
HWND Successor(Desktop& desktop, const WindowRecord& window)
{
    const WindowRecord* const owner = desktop.windows.Find(window.owner);
    if (owner != nullptr && MayBecomeActive(*owner))
        return owner->handle;
    for (const WindowRecord* candidate : desktop.root->children)
        if (candidate != &window && MayBecomeActive(*candidate))
            return candidate->handle;
    return nullptr;
}

bool FocusIsInside(Desktop& desktop, const ThreadQueue& queue, HWND window)
{
    const WindowRecord* const focus = desktop.windows.Find(queue.focus);
    return focus != nullptr && IsSameOrDescendant(desktop.windows.Find(window), focus);
}

// Puts `topLevel` in the active place if `previous` still holds it. False when a message changed that meanwhile.
bool SwitchActive(ThreadQueue& queue, HWND previous, HWND topLevel)
{
    LockedDesktop desktop;
    if (queue.active != previous && !(queue.active == nullptr && desktop->windows.Find(previous) == nullptr))
        return false;
    queue.active = desktop->windows.Find(topLevel) == nullptr ? nullptr : topLevel;
    queue.focusWasGivenUp = false;
    return true;
}

// The default window procedure gave the active window the focus; a procedure that does not ask it, and a disabled
// window that cannot ask for it, get it all the same.
bool LacksFocus(ThreadQueue& queue, HWND topLevel)
{
    LockedDesktop desktop;
    if (topLevel == nullptr)
        return queue.active == nullptr && queue.focus != nullptr;
    return queue.active == topLevel && !queue.focusWasGivenUp && !FocusIsInside(*desktop, queue, topLevel);
}

void Activate(Desktop& desktop, const std::shared_ptr<ThreadQueue>& queue, HWND topLevel, WORD cause)
{
    QueueTask(desktop, queue, [topLevel, cause] { ActivateHere(topLevel, cause, topLevel); });
}

// A user who strikes a key while the program starts means its first window.
void TakeEarlyKeys(Desktop& desktop, ThreadQueue& queue)
{
    for (const InputEvent& event : desktop.earlyKeys)
        queue.input.push_back(event);
    if (!desktop.earlyKeys.empty())
        Notify(queue);
    desktop.earlyKeys.clear();
}

} // namespace

void ChangeFocus(HWND window)
{
    const auto queue = CurrentQueue();
    HWND previous = nullptr;
    {
        LockedDesktop desktop;
        previous = queue->focus;
        if (previous == window)
            return;
        queue->focus = window;
    }
    if (previous != nullptr)
        SendMessageW(previous, WM_KILLFOCUS, reinterpret_cast<WPARAM>(window), 0);
    {
        LockedDesktop desktop;
        if (queue->focus != window)
            return;
    }
    if (window != nullptr)
        SendMessageW(window, WM_SETFOCUS, reinterpret_cast<WPARAM>(previous), 0);
}

void ActivateHere(HWND topLevel, WORD cause, HWND other)
{
    const auto queue = CurrentQueue();
    HWND previous = nullptr;
    {
        LockedDesktop desktop;
        previous = queue->active;
    }
    if (previous == topLevel)
        return;
    if (previous != nullptr)
        SendMessageW(previous, WM_ACTIVATE, WA_INACTIVE, reinterpret_cast<LPARAM>(other));
    if (!SwitchActive(*queue, previous, topLevel))
        return;
    if (topLevel != nullptr)
        SendMessageW(topLevel, WM_ACTIVATE, cause, reinterpret_cast<LPARAM>(previous));
    if (LacksFocus(*queue, topLevel))
        ChangeFocus(topLevel);
}

void TakeForeground(HWND topLevel, WORD cause)
{
    const auto self = CurrentQueue();
    bool activateHere = false;
    bool deactivateHere = false;
    {
        LockedDesktop desktop;
        WindowRecord* const record = desktop->windows.Find(topLevel);
        if (record == nullptr || record->queue == nullptr)
            return;
        const auto loser = desktop->foregroundQueue;
        const auto winner = record->queue;
        desktop->foreground = topLevel;
        desktop->foregroundQueue = winner;
        TakeEarlyKeys(*desktop, *winner);
        RaiseToTop(*desktop, *record);
        if (!desktop->displayActive)
            return;
        if (loser != nullptr && loser != winner) {
            deactivateHere = loser == self;
            if (!deactivateHere)
                QueueTask(*desktop, loser, [topLevel] { ActivateHere(nullptr, WA_INACTIVE, topLevel); });
        }
        activateHere = winner == self;
        if (!activateHere)
            Activate(*desktop, winner, topLevel, cause);
    }
    if (deactivateHere)
        ActivateHere(nullptr, WA_INACTIVE, topLevel);
    if (activateHere)
        ActivateHere(topLevel, cause, topLevel);
}

void LeaveWindow(HWND window)
{
    const auto self = CurrentQueue();
    HWND successor = nullptr;
    bool isOurs = false;
    bool wasForeground = false;
    {
        LockedDesktop desktop;
        const WindowRecord* const record = desktop->windows.Find(window);
        if (record == nullptr || !record->IsTopLevel())
            return;
        wasForeground = desktop->foreground == window;
        if (self->active != window && !wasForeground)
            return;
        successor = Successor(*desktop, *record);
        const WindowRecord* const next = desktop->windows.Find(successor);
        isOurs = next != nullptr && next->queue == self;
        if (wasForeground && next == nullptr)
            desktop->foreground = nullptr;
    }
    if (wasForeground && successor != nullptr)
        TakeForeground(successor, WA_ACTIVE);
    else
        ActivateHere(isOurs ? successor : nullptr, WA_ACTIVE, isOurs ? successor : nullptr);
}

void SetDisplayActive(bool active)
{
    LockedDesktop desktop;
    if (desktop->displayActive == active)
        return;
    desktop->displayActive = active;
    desktop->keysDown.reset(); // other programs hear what happens to them meanwhile
    const auto queue = desktop->foregroundQueue;
    if (queue == nullptr)
        return;
    if (active)
        Activate(*desktop, queue, desktop->foreground, WA_ACTIVE);
    else
        QueueTask(*desktop, queue, [] { ActivateHere(nullptr, WA_INACTIVE, nullptr); });
}

namespace {

struct FocusPlan {
    bool isAllowed = false;
    HWND previous = nullptr;
    HWND topLevel = nullptr; // to be activated first; null when it is active already
    bool isForeground = false;
};

FocusPlan PlanFocus(const std::shared_ptr<ThreadQueue>& queue, HWND window)
{
    LockedDesktop desktop;
    FocusPlan plan;
    plan.previous = queue->focus;
    plan.isAllowed = window == nullptr;
    queue->focusWasGivenUp = window == nullptr;
    WindowRecord* const record = window == nullptr ? nullptr : desktop.Find(window);
    if (record == nullptr || record->queue != queue)
        return plan;
    if (window == queue->focus) { // it keeps what it has, disabled or not
        plan.isAllowed = true;
        return plan;
    }
    for (const WindowRecord* ancestor = record; ancestor->parent != nullptr; ancestor = ancestor->parent)
        if (ancestor->Has(WS_DISABLED))
            return plan;
    plan.isAllowed = true;
    WindowRecord* const top = TopLevelOf(record);
    plan.topLevel = top->handle == queue->active ? nullptr : top->handle;
    plan.isForeground = desktop->foregroundQueue == nullptr || desktop->foregroundQueue == queue;
    return plan;
}

bool IsActiveHere(const std::shared_ptr<ThreadQueue>& queue, HWND topLevel)
{
    LockedDesktop desktop;
    return queue->active == topLevel;
}

// The desktop's top-level window for a handle whose lowest bit may be set: the program's way to ask for the last
// pop-up.
HWND ForegroundTarget(HWND window)
{
    const auto value = reinterpret_cast<ULONG_PTR>(window) & ~static_cast<ULONG_PTR>(1);
    LockedDesktop desktop;
    WindowRecord* const record = desktop.Find(reinterpret_cast<HWND>(value));
    if (record == nullptr || record->queue == nullptr)
        return nullptr;
    return TopLevelOf(record)->handle;
}

} // namespace

} // namespace cardsong::user

using namespace cardsong::user;

HWND SetFocus(HWND window)
{
    const auto queue = CurrentQueue();
    const auto plan = PlanFocus(queue, window);
    if (!plan.isAllowed)
        return nullptr;
    if (plan.topLevel != nullptr) {
        if (plan.isForeground)
            TakeForeground(plan.topLevel, WA_ACTIVE);
        else
            ActivateHere(plan.topLevel, WA_ACTIVE, plan.topLevel);
        if (!IsActiveHere(queue, plan.topLevel))
            return nullptr;
    }
    ChangeFocus(window);
    return plan.previous;
}

HWND GetFocus()
{
    const auto& queue = CurrentQueue();
    LockedDesktop desktop;
    return queue->focus;
}

HWND GetActiveWindow()
{
    const auto& queue = CurrentQueue();
    LockedDesktop desktop;
    return queue->active;
}

HWND SetActiveWindow(HWND window)
{
    const auto queue = CurrentQueue();
    HWND previous = nullptr;
    bool isForeground = false;
    {
        LockedDesktop desktop;
        previous = queue->active;
        const WindowRecord* const record = window == nullptr ? nullptr : desktop.Find(window);
        if (window != nullptr && (record == nullptr || record->queue != queue))
            return nullptr;
        if (record != nullptr && !record->IsTopLevel())
            return previous; // a child changes nothing, and is no error either
        isForeground = desktop->foregroundQueue == nullptr || desktop->foregroundQueue == queue;
        if (window == nullptr && isForeground)
            desktop->foreground = nullptr;
    }
    if (window != nullptr && isForeground)
        TakeForeground(window, WA_ACTIVE);
    else
        ActivateHere(window, WA_ACTIVE, window);
    return previous;
}

HWND GetForegroundWindow()
{
    LockedDesktop desktop;
    return desktop->displayActive ? desktop->foreground : nullptr;
}

BOOL SetForegroundWindow(HWND window)
{
    const HWND target = ForegroundTarget(window);
    if (target == nullptr)
        return FALSE;
    TakeForeground(target, WA_ACTIVE);
    return TRUE;
}
