#include "platform/linux/user/z_order.h"

#include <algorithm>

namespace cardsong::user {

namespace {

using Siblings = std::vector<WindowRecord*>;

bool IsTopmost(const WindowRecord& record)
{
    return (record.exStyle & WS_EX_TOPMOST) != 0;
}

std::size_t IndexOf(const Siblings& siblings, HWND window)
{
    const auto found =
        std::find_if(siblings.begin(), siblings.end(), [&](const auto* sibling) { return sibling->handle == window; });
    return static_cast<std::size_t>(found - siblings.begin());
}

// Where among `others` (the siblings without the window itself) the window belongs.
std::size_t InsertionIndex(const Siblings& others, const WindowRecord& record, HWND after)
{
    std::size_t first = 0;
    std::size_t last = others.size();
    if (record.IsTopLevel()) {
        const auto isTopmost = [](const auto* other) { return IsTopmost(*other); };
        const auto band = static_cast<std::size_t>(std::count_if(others.begin(), others.end(), isTopmost));
        (IsTopmost(record) ? last : first) = band;
        if (record.owner != nullptr)
            last = std::max(first, std::min(last, IndexOf(others, record.owner)));
    }
    if (after == HWND_TOP || after == HWND_TOPMOST || after == HWND_NOTOPMOST)
        return first;
    if (after == HWND_BOTTOM)
        return last;
    return std::clamp(IndexOf(others, after) + 1, first, last);
}

Siblings Without(const Siblings& siblings, const WindowRecord& record)
{
    Siblings others = siblings;
    std::erase(others, &record);
    return others;
}

} // namespace

void LinkNewWindow(WindowRecord& record)
{
    auto& siblings = record.parent->children;
    const auto index = InsertionIndex(siblings, record, record.IsTopLevel() ? HWND_TOP : HWND_BOTTOM);
    siblings.insert(siblings.begin() + static_cast<std::ptrdiff_t>(index), &record);
}

void UnlinkWindow(WindowRecord& record)
{
    std::erase(record.parent->children, &record);
}

void PlaceInOrder(Desktop&, WindowRecord& record, HWND after)
{
    auto& siblings = record.parent->children;
    auto others = Without(siblings, record);
    const auto index = InsertionIndex(others, record, after);
    others.insert(others.begin() + static_cast<std::ptrdiff_t>(index), &record);
    siblings = std::move(others);
}

bool WouldMoveInOrder(Desktop&, const WindowRecord& record, HWND after)
{
    const auto& siblings = record.parent->children;
    const bool isTopmost = IsTopmost(record);
    const bool leavesBand = after == HWND_NOTOPMOST || after == HWND_BOTTOM;
    if ((after == HWND_TOPMOST && !isTopmost) || (leavesBand && isTopmost))
        return true;
    const auto others = Without(siblings, record);
    return InsertionIndex(others, record, after) != IndexOf(siblings, record.handle);
}

std::vector<WindowRecord*> OwnedWindowsBelow(const WindowRecord& record)
{
    std::vector<WindowRecord*> owned;
    const auto& siblings = record.parent->children;
    for (auto sibling = siblings.rbegin(); sibling != siblings.rend() && *sibling != &record; ++sibling)
        if ((*sibling)->owner == record.handle)
            owned.push_back(*sibling);
    return owned;
}

void ChangeBand(Desktop& desktop, WindowRecord& record, HWND after)
{
    if (!record.IsTopLevel())
        return;
    if (after == HWND_TOPMOST)
        record.exStyle |= WS_EX_TOPMOST;
    else if (after == HWND_NOTOPMOST || after == HWND_BOTTOM)
        record.exStyle &= ~WS_EX_TOPMOST;
    else
        return;
    if (after == HWND_BOTTOM)
        return;
    const auto siblings = record.parent->children;
    for (WindowRecord* other : siblings)
        if (other->owner == record.handle)
            ChangeBand(desktop, *other, after);
}

} // namespace cardsong::user
