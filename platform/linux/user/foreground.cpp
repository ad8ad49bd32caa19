#include "platform/linux/user/foreground.h"

#include "platform/linux/user/activation.h"
#include "platform/linux/user/input.h"
#include "platform/linux/user/window_position.h"
#include "platform/linux/user/window_tree.h"

namespace cardsong::user {

namespace {

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

// The top-level window of a handle. Programs set the lowest bit of a handle to ask for the last pop-up: it is ignored.
HWND ForegroundTarget(HWND window)
{
    const auto value = reinterpret_cast<ULONG_PTR>(window) & ~static_cast<ULONG_PTR>(1);
    LockedDesktop desktop;
    WindowRecord* const record = desktop.Find(reinterpret_cast<HWND>(value));
    if (record == nullptr || record->queue == nullptr)
        return nullptr;
    return TopLevelOf(record)->handle;
}

void RaiseDisplay()
{
    LockedDesktop desktop;
    if (desktop->raiser)
        desktop->raiser();
}

} // namespace

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

void InstallRaiser(std::function<void()> raiser)
{
    LockedDesktop desktop;
    desktop->raiser = std::move(raiser);
}

} // namespace cardsong::user

using namespace cardsong::user;

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
    RaiseDisplay();
    return TRUE;
}
