#include "platform/linux/user/hit_test.h"

#include <algorithm>

namespace cardsong::user {

namespace {

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

} // namespace

Target TargetOf(HWND window)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop->windows.Find(window);
    if (record == nullptr)
        return {};
    return { window, record->queue, record->Has(WS_DISABLED) };
}

Target HitTest(const std::shared_ptr<ThreadQueue>& self, POINT at, HWND first)
{
    std::vector<HWND> hits;
    {
        LockedDesktop desktop;
        ListHits(*desktop->root, at, hits);
    }
    const auto found = std::find(hits.begin(), hits.end(), first);
    if (found != hits.end())
        hits.erase(hits.begin(), found);
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

} // namespace cardsong::user
