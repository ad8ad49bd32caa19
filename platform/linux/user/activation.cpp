#include "platform/linux/user/activation.h"

#include "platform/linux/user/focus.h"
#include "platform/linux/user/foreground.h"
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

// A window that becomes active gets the focus, even if it is disabled. The default window procedure has given it
// already; a window that does not call that procedure still lacks it.
bool LacksFocus(ThreadQueue& queue, HWND topLevel)
{
    LockedDesktop desktop;
    if (topLevel == nullptr)
        return queue.active == nullptr && queue.focus != nullptr;
    return queue.active == topLevel && !queue.focusWasGivenUp && !FocusIsInside(*desktop, queue, topLevel);
}

} // namespace

void ActivateHere(HWND topLevel, WORD cause, HWND other)
{
    const auto queue = CurrentQueue();
    const HWND previous = GetActiveWindow();
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

} // namespace cardsong::user

using namespace cardsong::user;

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
