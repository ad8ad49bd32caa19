#include "platform/linux/user/focus.h"

#include "platform/linux/user/activation.h"
#include "platform/linux/user/foreground.h"
#include "platform/linux/user/window_tree.h"

namespace cardsong::user {

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
        if (GetActiveWindow() != plan.topLevel)
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
