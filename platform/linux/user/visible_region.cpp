#include "platform/linux/user/visible_region.h"

#include "platform/linux/user/screen_contexts.h"

namespace cardsong::user {

namespace {

RECT ScreenRect(const WindowRecord& record)
{
    const POINT origin = ScreenOrigin(record);
    return { origin.x, origin.y, origin.x + record.rect.right - record.rect.left,
             origin.y + record.rect.bottom - record.rect.top };
}

bool Covers(const WindowRecord& record)
{
    return record.Has(WS_VISIBLE) && (record.exStyle & WS_EX_TRANSPARENT) == 0;
}

void SubtractSiblingsAbove(Region& region, const WindowRecord& record)
{
    for (const WindowRecord* sibling : record.parent->children) {
        if (sibling == &record)
            return;
        if (Covers(*sibling))
            region.Subtract(ScreenRect(*sibling));
    }
}

Region WorkOutClip(Desktop& desktop, const WindowRecord& record)
{
    if (!record.Has(WS_VISIBLE))
        return {};
    if (record.parent == nullptr)
        return Region(record.rect);
    Region region = ClipRegion(desktop, *record.parent);
    region.Intersect(ScreenRect(record));
    if (record.IsTopLevel() || record.Has(WS_CLIPSIBLINGS))
        SubtractSiblingsAbove(region, record);
    return region;
}

void WorkOut(Desktop& desktop, WindowRecord& record)
{
    if (record.regionVersion == desktop.treeVersion)
        return;
    record.origin = ScreenOrigin(record);
    record.clip = WorkOutClip(desktop, record);
    record.visible = record.clip;
    if (record.Has(WS_CLIPCHILDREN))
        for (const WindowRecord* child : record.children)
            if (Covers(*child))
                record.visible.Subtract(ScreenRect(*child));
    record.regionVersion = desktop.treeVersion;
}

} // namespace

void TreeChanged(Desktop& desktop)
{
    ++desktop.treeVersion;
    RefreshContexts(desktop);
}

bool IsShown(const WindowRecord& record)
{
    for (const WindowRecord* ancestor = &record; ancestor != nullptr; ancestor = ancestor->parent)
        if (!ancestor->Has(WS_VISIBLE))
            return false;
    return true;
}

POINT ScreenOrigin(const WindowRecord& record)
{
    POINT origin{};
    for (const WindowRecord* ancestor = &record; ancestor != nullptr; ancestor = ancestor->parent) {
        origin.x += ancestor->rect.left;
        origin.y += ancestor->rect.top;
    }
    return origin;
}

const Region& ClipRegion(Desktop& desktop, WindowRecord& record)
{
    WorkOut(desktop, record);
    return record.clip;
}

const Region& VisibleRegion(Desktop& desktop, WindowRecord& record)
{
    WorkOut(desktop, record);
    return record.visible;
}

} // namespace cardsong::user
