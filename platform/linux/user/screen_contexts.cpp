#include "platform/linux/user/screen_contexts.h"

#include "platform/linux/ce/gdi.h"
#include "platform/linux/gdi/screen.h"
#include "platform/linux/user/visible_region.h"

#include <algorithm>

namespace cardsong::user {

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

HDC HoldContext(Desktop& desktop, HeldContext held, const std::shared_ptr<ThreadQueue>& holder)
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

bool ReleaseContext(Desktop& desktop, HDC context)
{
    const auto found = std::find_if(desktop.contexts.begin(), desktop.contexts.end(),
                                    [&](const HeldContext& held) { return held.context == context; });
    if (found == desktop.contexts.end())
        return false;
    ThreadQueue& holder = *found->holder;
    --holder.heldContexts;
    if (found->isPaint)
        --holder.openPaints;
    gdi::DestroyScreenContext(context);
    desktop.contexts.erase(found);
    return true;
}

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
    return HoldContext(*desktop, std::move(held), self);
}

int ReleaseDC(HWND, HDC context)
{
    LockedDesktop desktop;
    return ReleaseContext(*desktop, context) ? 1 : 0;
}
