// Contexts on the screen: BeginPaint, GetDC and their ends.
#include "platform/linux/user/update_region.h"
#include "platform/linux/user/visible_region.h"
#include "platform/linux/user/window_tree.h"

#include "platform/linux/ce/kernel.h"
#include "platform/linux/gdi/screen.h"

#include <algorithm>

namespace cardsong::user {

namespace {

// Where the context draws: nothing for a window that is gone.
Region DrawableRegion(Desktop& desktop, const HeldContext& held, POINT& origin)
{
    origin = {};
    WindowRecord* const record = held.window == nullptr ? desktop.root : desktop.windows.Find(held.window);
    if (record == nullptr)
        return {};
    if (record == desktop.root)
        return Region(record->rect); // the whole screen, windows and all
    Region region = VisibleRegion(desktop, *record);
    origin = record->origin;
    if (held.isPaint) {
        Region clip = held.paintClip;
        clip.Translate(origin.x, origin.y);
        region.Intersect(clip);
    }
    return region;
}

HDC Hold(Desktop& desktop, HeldContext held, const std::shared_ptr<ThreadQueue>& holder)
{
    held.holder = holder;
    ++holder->heldContexts;
    if (held.isPaint)
        ++holder->openPaints;
    POINT origin{};
    const Region region = DrawableRegion(desktop, held, origin);
    held.context = gdi::CreateScreenContext(origin, region.Get());
    desktop.contexts.push_back(std::move(held));
    return desktop.contexts.back().context;
}

// False when no such context is held.
bool Release(Desktop& desktop, HDC context)
{
    const auto found = std::find_if(desktop.contexts.begin(), desktop.contexts.end(),
                                    [&](const HeldContext& held) { return held.context == context; });
    if (found == desktop.contexts.end())
        return false;
    ThreadQueue& holder = *found->holder;
    if (holder.heldContexts > 0) // a queue that was cleared counts anew
        --holder.heldContexts;
    if (found->isPaint && holder.openPaints > 0)
        --holder.openPaints;
    gdi::DestroyScreenContext(context);
    desktop.contexts.erase(found);
    return true;
}

// Takes the update region: the window is painted as far as the API is concerned.
HeldContext TakeUpdate(WindowRecord& record)
{
    HeldContext held;
    held.window = record.handle;
    held.isPaint = true;
    held.paintClip = std::move(record.update);
    record.update = {};
    if (!held.paintClip.IsEmpty())
        --record.queue->pendingPaints;
    record.eraseUpdate = false;
    return held;
}

} // namespace

void RefreshContexts(Desktop& desktop)
{
    for (const HeldContext& held : desktop.contexts) {
        POINT origin{};
        const Region region = DrawableRegion(desktop, held, origin);
        gdi::UpdateScreenContext(held.context, origin, region.Get());
    }
}

} // namespace cardsong::user

using namespace cardsong::user;

HDC BeginPaint(HWND window, PAINTSTRUCT* paint)
{
    if (paint == nullptr) {
        ValidateRect(window, nullptr);
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const auto& self = CurrentQueue();
    bool erase = false;
    *paint = {};
    {
        LockedDesktop desktop;
        WindowRecord* const record = desktop.Find(window);
        if (record == nullptr || record->queue == nullptr)
            return nullptr;
        erase = record->eraseUpdate;
        auto held = TakeUpdate(*record);
        TopLevelOf(record)->paintHasBegun = true;
        POINT origin{};
        Region drawable = DrawableRegion(*desktop, held, origin);
        drawable.Translate(-origin.x, -origin.y);
        paint->rcPaint = drawable.Bounds();
        paint->hdc = Hold(*desktop, std::move(held), self);
    }
    if (erase)
        paint->fErase =
            SendMessageW(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(paint->hdc), 0) == 0 ? TRUE : FALSE;
    return paint->hdc;
}

BOOL EndPaint(HWND, const PAINTSTRUCT* paint)
{
    if (paint == nullptr)
        return FALSE;
    LockedDesktop desktop;
    Release(*desktop, paint->hdc);
    return TRUE;
}

HDC GetDC(HWND window)
{
    const auto& self = CurrentQueue();
    LockedDesktop desktop;
    HeldContext held;
    if (window != nullptr) {
        const WindowRecord* const record = desktop.Find(window);
        if (record == nullptr)
            return nullptr;
        held.window = window;
    }
    return Hold(*desktop, std::move(held), self);
}

int ReleaseDC(HWND, HDC context)
{
    LockedDesktop desktop;
    return Release(*desktop, context) ? 1 : 0;
}
