#include "platform/linux/user/window_position.h"

#include "platform/linux/ce/kernel.h"
#include "platform/linux/user/foreground.h"
#include "platform/linux/user/update_region.h"
#include "platform/linux/user/visible_region.h"
#include "platform/linux/user/window_tree.h"
#include "platform/linux/user/z_order.h"

#include <algorithm>

namespace cardsong::user {

namespace {

constexpr UINT kNothingChanges = SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER;

enum class Repaint { Nothing, Gained, Whole };

// Invalidates what the window gained since its region was `before`, and what it uncovered.
void RepaintChanged(Desktop& desktop, WindowRecord& record, const Region& before, Repaint repaint)
{
    const Region& after = ClipRegion(desktop, record);
    Region uncovered = before;
    uncovered.Subtract(after);
    Region gained = after;
    if (repaint == Repaint::Gained)
        gained.Subtract(before);
    ExposeBeneath(desktop, *record.parent, uncovered, &record);
    InvalidateTree(desktop, record, gained, true, Reach::AllChildren);
}

// Applies `change` to the windows at once, so that nothing is painted for a state in between.
template <typename Change>
void ChangeWindows(Desktop& desktop, const std::vector<WindowRecord*>& windows, Repaint repaint, Change change)
{
    std::vector<Region> before;
    for (WindowRecord* window : windows)
        before.push_back(ClipRegion(desktop, *window));
    change();
    TreeChanged(desktop);
    if (repaint == Repaint::Nothing)
        return;
    for (std::size_t i = 0; i < windows.size(); ++i)
        RepaintChanged(desktop, *windows[i], before[i], repaint);
}

void ListWithOwned(WindowRecord& record, std::vector<WindowRecord*>& windows)
{
    windows.push_back(&record);
    for (WindowRecord* sibling : record.parent->children)
        if (sibling->owner == record.handle)
            ListWithOwned(*sibling, windows);
}

void PlaceGroup(Desktop& desktop, WindowRecord& record, HWND after)
{
    PlaceInOrder(desktop, record, after);
    for (WindowRecord* owned : OwnedWindowsBelow(record))
        PlaceGroup(desktop, *owned, HWND_TOP);
}

void PlaceWithOwned(Desktop& desktop, WindowRecord& record, HWND after, Repaint repaint)
{
    // A child that does not yield to its siblings shows no gain: it is painted whole.
    const bool yields = record.IsTopLevel() || record.Has(WS_CLIPSIBLINGS);
    const auto effect = repaint == Repaint::Gained && !yields ? Repaint::Whole : repaint;
    ChangeBand(desktop, record, after);
    std::vector<WindowRecord*> group;
    ListWithOwned(record, group);
    ChangeWindows(desktop, group, effect, [&] { PlaceGroup(desktop, record, after); });
}

// Leaves in the flags only what really changes.
void NormaliseFlags(const WindowRecord& record, WINDOWPOS& position)
{
    const RECT& rect = record.rect;
    position.cx = std::max(position.cx, 0);
    position.cy = std::max(position.cy, 0);
    if (position.x == rect.left && position.y == rect.top)
        position.flags |= SWP_NOMOVE;
    if (position.cx == rect.right - rect.left && position.cy == rect.bottom - rect.top)
        position.flags |= SWP_NOSIZE;
    position.flags &= ~(record.Has(WS_VISIBLE) ? SWP_SHOWWINDOW : SWP_HIDEWINDOW);
    if ((position.flags & SWP_HIDEWINDOW) != 0 && position.hwndInsertAfter == HWND_TOP)
        position.flags |= SWP_NOZORDER; // nothing is raised to vanish
    const bool activates = record.IsTopLevel() && (position.flags & (SWP_NOACTIVATE | SWP_HIDEWINDOW)) == 0;
    const bool keepsBand = position.hwndInsertAfter != HWND_TOPMOST && position.hwndInsertAfter != HWND_NOTOPMOST;
    if (activates && keepsBand) {
        position.flags &= ~SWP_NOZORDER;
        position.hwndInsertAfter = HWND_TOP;
    }
}

bool Normalise(Desktop& desktop, HWND window, WINDOWPOS& position)
{
    const WindowRecord* const record = desktop.windows.Find(window);
    if (record == nullptr || record->parent == nullptr)
        return false;
    NormaliseFlags(*record, position);
    if ((position.flags & SWP_NOZORDER) == 0 && !WouldMoveInOrder(desktop, *record, position.hwndInsertAfter))
        position.flags |= SWP_NOZORDER;
    return true;
}

void MoveAndSize(WindowRecord& record, const WINDOWPOS& position)
{
    RECT& rect = record.rect;
    SIZE size{ rect.right - rect.left, rect.bottom - rect.top };
    if ((position.flags & SWP_NOMOVE) == 0) {
        rect.left = position.x;
        rect.top = position.y;
    }
    if ((position.flags & SWP_NOSIZE) == 0)
        size = { position.cx, position.cy };
    rect.right = rect.left + size.cx;
    rect.bottom = rect.top + size.cy;
    if (position.flags & SWP_SHOWWINDOW)
        record.style |= WS_VISIBLE;
    if (position.flags & SWP_HIDEWINDOW) {
        record.style &= ~WS_VISIBLE;
        ForgetUpdates(record);
    }
}

Repaint RepaintFor(const WindowRecord& record, const WINDOWPOS& position)
{
    if (position.flags & SWP_NOREDRAW)
        return Repaint::Nothing;
    if ((position.flags & SWP_NOMOVE) == 0)
        return Repaint::Whole;
    const bool widthChanges = position.cx != record.rect.right - record.rect.left;
    const bool heightChanges = position.cy != record.rect.bottom - record.rect.top;
    const UINT style = record.windowClass->style;
    const bool asksWhole = (widthChanges && (style & CS_HREDRAW)) || (heightChanges && (style & CS_VREDRAW));
    return (position.flags & SWP_NOSIZE) == 0 && asksWhole ? Repaint::Whole : Repaint::Gained;
}

// True when the window is shown afterwards.
bool Apply(HWND window, const WINDOWPOS& position)
{
    LockedDesktop desktop;
    WindowRecord* const record = desktop->windows.Find(window);
    if (record == nullptr)
        return false;
    const auto repaint = RepaintFor(*record, position);
    if ((position.flags & SWP_NOZORDER) == 0) {
        const auto orderRepaint = repaint == Repaint::Nothing ? Repaint::Nothing : Repaint::Gained;
        if (position.hwndInsertAfter == HWND_TOP && record->IsTopLevel())
            RaiseToTop(*desktop, *record);
        else
            PlaceWithOwned(*desktop, *record, position.hwndInsertAfter, orderRepaint);
    }
    const UINT others = position.flags & (SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW | SWP_HIDEWINDOW);
    if (others != (SWP_NOMOVE | SWP_NOSIZE))
        ChangeWindows(*desktop, { record }, repaint, [&] { MoveAndSize(*record, position); });
    return IsShown(*record);
}

// Whether SetWindowPos takes it for the window to stand after.
bool IsPlace(const Desktop& desktop, HWND after)
{
    const bool isNamed = after == HWND_TOP || after == HWND_BOTTOM || after == HWND_TOPMOST || after == HWND_NOTOPMOST;
    return isNamed || desktop.windows.Find(after) != nullptr;
}

bool IsTopLevelWindow(HWND window)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop->windows.Find(window);
    return record != nullptr && record->IsTopLevel();
}

} // namespace

void TellSizeAndPlace(HWND window, const WINDOWPOS& position)
{
    if ((position.flags & SWP_NOMOVE) == 0)
        SendMessageW(window, WM_MOVE, 0, MAKELPARAM(position.x, position.y));
    if ((position.flags & SWP_NOSIZE) == 0)
        SendMessageW(window, WM_SIZE, SIZE_RESTORED, MAKELPARAM(position.cx, position.cy));
}

void RaiseToTop(Desktop& desktop, WindowRecord& record)
{
    if (WindowRecord* const owner = desktop.windows.Find(record.owner))
        RaiseToTop(desktop, *owner);
    if (WouldMoveInOrder(desktop, record, HWND_TOP))
        PlaceWithOwned(desktop, record, HWND_TOP, Repaint::Gained);
}

} // namespace cardsong::user

using namespace cardsong::user;

BOOL SetWindowPos(HWND window, HWND after, int x, int y, int widthPx, int heightPx, UINT flags)
{
    WINDOWPOS position{ window, after, x, y, widthPx, heightPx, flags };
    {
        LockedDesktop desktop;
        const WindowRecord* const record = desktop.Find(window);
        if (record == nullptr || record->parent == nullptr)
            return FALSE;
        if ((flags & SWP_NOZORDER) == 0 && !IsPlace(*desktop, after)) {
            SetLastError(ERROR_INVALID_WINDOW_HANDLE);
            return FALSE;
        }
        const RECT& rect = record->rect;
        if (flags & SWP_NOMOVE) {
            position.x = rect.left;
            position.y = rect.top;
        }
        if (flags & SWP_NOSIZE) {
            position.cx = rect.right - rect.left;
            position.cy = rect.bottom - rect.top;
        }
    }
    SendMessageW(window, WM_WINDOWPOSCHANGING, 0, reinterpret_cast<LPARAM>(&position));
    {
        LockedDesktop desktop;
        if (!Normalise(*desktop, window, position))
            return FALSE;
    }
    const bool isShown = Apply(window, position);
    if (isShown && (position.flags & SWP_NOACTIVATE) == 0 && IsTopLevelWindow(window))
        TakeForeground(window, WA_ACTIVE);
    const UINT changes = position.flags & (kNothingChanges | SWP_SHOWWINDOW | SWP_HIDEWINDOW);
    if (changes != kNothingChanges)
        SendMessageW(window, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&position));
    return TRUE;
}

BOOL MoveWindow(HWND window, int x, int y, int widthPx, int heightPx, BOOL repaint)
{
    const UINT flags = SWP_NOZORDER | SWP_NOACTIVATE | (repaint == FALSE ? SWP_NOREDRAW : 0);
    return SetWindowPos(window, nullptr, x, y, widthPx, heightPx, flags);
}
