#include "platform/linux/user/update_region.h"

#include "platform/linux/ce/gdi.h"
#include "platform/linux/ce/kernel.h"
#include "platform/linux/gdi/screen.h"
#include "platform/linux/user/visible_region.h"

#include <algorithm>

namespace cardsong::user {

namespace {

void SetUpdate(WindowRecord& record, Region update)
{
    record.update = std::move(update);
    if (record.update.IsEmpty())
        record.eraseUpdate = false;
}

void InvalidateOne(Desktop& desktop, WindowRecord& record, const Region& area, bool erase)
{
    Region update = area;
    update.Intersect(VisibleRegion(desktop, record));
    if (update.IsEmpty() || record.queue == nullptr)
        return;
    const POINT origin = record.origin;
    update.Translate(-origin.x, -origin.y);
    update.Add(record.update);
    SetUpdate(record, std::move(update));
    record.eraseUpdate = record.eraseUpdate || erase;
    Notify(*record.queue);
}

void PaintDesktop(const Region& area)
{
    const HDC context = gdi::CreateScreenContext({ 0, 0 }, area.Get());
    const RECT all = area.Bounds();
    FillRect(context, &all, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    gdi::DestroyScreenContext(context);
}

WindowRecord* FindDue(Desktop& desktop, WindowRecord& record, const std::shared_ptr<ThreadQueue>& queue,
                      const std::function<bool(HWND)>& allows)
{
    if (record.queue == queue && IsDuePaint(desktop, record) && allows(record.handle))
        return &record;
    for (WindowRecord* child : record.children)
        if (WindowRecord* const found = FindDue(desktop, *child, queue, allows))
            return found;
    return nullptr;
}

bool ReachesChildren(const WindowRecord& record, Reach reach)
{
    return reach == Reach::AllChildren || !record.Has(WS_CLIPCHILDREN);
}

RECT Normalised(const RECT& rect)
{
    return { std::min(rect.left, rect.right), std::min(rect.top, rect.bottom), std::max(rect.left, rect.right),
             std::max(rect.top, rect.bottom) };
}

RECT ClientOf(const WindowRecord& record)
{
    return { 0, 0, record.rect.right - record.rect.left, record.rect.bottom - record.rect.top };
}

// `area` in the window's coordinates.
void ValidateTree(WindowRecord& record, const Region& area)
{
    if (!record.update.IsEmpty()) {
        Region rest = record.update;
        rest.Subtract(area);
        SetUpdate(record, std::move(rest));
    }
    if (record.Has(WS_CLIPCHILDREN))
        return;
    for (WindowRecord* child : record.children) {
        Region part = area;
        part.Translate(-child->rect.left, -child->rect.top);
        part.Intersect(ClientOf(*child));
        if (!part.IsEmpty())
            ValidateTree(*child, part);
    }
}

void InvalidateEverything(Desktop& desktop)
{
    const Region screen(desktop.root->rect);
    for (WindowRecord* window : desktop.root->children)
        InvalidateTree(desktop, *window, screen, true, Reach::AllChildren);
}

} // namespace

void InvalidateTree(Desktop& desktop, WindowRecord& record, const Region& area, bool erase, Reach reach)
{
    if (area.IsEmpty() || !record.Has(WS_VISIBLE))
        return;
    InvalidateOne(desktop, record, area, erase);
    if (!ReachesChildren(record, reach))
        return;
    for (WindowRecord* child : record.children) {
        if (!child->Has(WS_VISIBLE))
            continue;
        Region part = area;
        part.Intersect(ClipRegion(desktop, *child));
        InvalidateTree(desktop, *child, part, erase, reach);
    }
}

void ExposeBeneath(Desktop& desktop, WindowRecord& parent, const Region& area, const WindowRecord* except)
{
    if (area.IsEmpty())
        return;
    InvalidateOne(desktop, parent, area, true);
    Region bare = area;
    for (WindowRecord* sibling : parent.children) {
        if (sibling == except)
            continue;
        InvalidateTree(desktop, *sibling, area, true, Reach::AllChildren);
        if (parent.parent == nullptr)
            bare.Subtract(ClipRegion(desktop, *sibling));
    }
    if (parent.parent == nullptr && !bare.IsEmpty())
        PaintDesktop(bare);
}

Region TakeUpdate(WindowRecord& record)
{
    Region update = record.update;
    SetUpdate(record, {});
    return update;
}

void ForgetUpdates(WindowRecord& record)
{
    SetUpdate(record, {});
    for (WindowRecord* child : record.children)
        ForgetUpdates(*child);
}

bool IsDuePaint(Desktop& desktop, WindowRecord& record)
{
    if (record.update.IsEmpty())
        return false;
    Region seen = VisibleRegion(desktop, record);
    seen.Translate(-record.origin.x, -record.origin.y);
    seen.Intersect(record.update);
    if (seen.IsEmpty())
        SetUpdate(record, {});
    return !seen.IsEmpty();
}

bool OwesPaint(Desktop& desktop, WindowRecord& record)
{
    return IsDuePaint(desktop, record) || std::any_of(record.children.begin(), record.children.end(),
                                                      [&](WindowRecord* child) { return OwesPaint(desktop, *child); });
}

HWND FindWindowToPaint(Desktop& desktop, const std::shared_ptr<ThreadQueue>& queue,
                       const std::function<bool(HWND)>& allows)
{
    const WindowRecord* const found = FindDue(desktop, *desktop.root, queue, allows);
    return found == nullptr ? nullptr : found->handle;
}

} // namespace cardsong::user

using namespace cardsong::user;

BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase)
{
    LockedDesktop desktop;
    if (window == nullptr) {
        InvalidateEverything(*desktop);
        return TRUE;
    }
    WindowRecord* const record = desktop.Find(window);
    if (record == nullptr)
        return FALSE;
    if (!IsShown(*record))
        return TRUE;
    RECT area = rect == nullptr ? ClientOf(*record) : Normalised(*rect);
    const POINT origin = ScreenOrigin(*record);
    area = { area.left + origin.x, area.top + origin.y, area.right + origin.x, area.bottom + origin.y };
    Region part(area);
    part.Intersect(desktop->root->rect);
    InvalidateTree(*desktop, *record, part, erase != FALSE, Reach::AsStyled);
    return TRUE;
}

BOOL ValidateRect(HWND window, const RECT* rect)
{
    LockedDesktop desktop;
    if (window == nullptr) { // the API's own oddity: no window means that all are painted anew
        InvalidateEverything(*desktop);
        return TRUE;
    }
    WindowRecord* const record = desktop.Find(window);
    if (record == nullptr)
        return FALSE;
    ValidateTree(*record, Region(rect == nullptr ? ClientOf(*record) : Normalised(*rect)));
    return TRUE;
}

BOOL GetUpdateRect(HWND window, LPRECT rect, BOOL erase)
{
    bool eraseNow = false;
    RECT bounds{};
    {
        LockedDesktop desktop;
        WindowRecord* const record = desktop.Find(window);
        if (record == nullptr)
            return FALSE;
        bounds = record->update.Bounds();
        eraseNow = erase != FALSE && record->eraseUpdate;
        if (eraseNow)
            record->eraseUpdate = false;
    }
    if (rect != nullptr)
        *rect = bounds;
    if (eraseNow) {
        const HDC context = GetDC(window);
        SendMessageW(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(context), 0);
        ReleaseDC(window, context);
    }
    return bounds.right > bounds.left ? TRUE : FALSE;
}
