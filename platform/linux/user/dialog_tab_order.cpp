#include "platform/linux/user/dialog_tab_order.h"

#include "platform/linux/user/desktop.h"
#include "platform/linux/user/window_tree.h"

#include <algorithm>

namespace cardsong::user {

namespace {

bool IsUsable(const WindowRecord& record)
{
    return record.Has(WS_VISIBLE) && !record.Has(WS_DISABLED);
}

struct Stop {
    HWND window = nullptr;
    bool isStop = false;
};

void ListStops(const WindowRecord& parent, bool isReachable, std::vector<Stop>& stops)
{
    for (const WindowRecord* child : parent.children) {
        const bool reaches = isReachable && IsUsable(*child);
        if (child->exStyle & WS_EX_CONTROLPARENT)
            ListStops(*child, reaches, stops);
        else
            stops.push_back({ child->handle, reaches && child->Has(WS_TABSTOP) });
    }
}

std::vector<WindowRecord*> GroupOf(const WindowRecord& record)
{
    const auto& siblings = record.parent->children;
    auto first = std::find(siblings.begin(), siblings.end(), &record);
    auto last = first + 1;
    while (first != siblings.begin() && !(*first)->Has(WS_GROUP))
        --first;
    while (last != siblings.end() && !(*last)->Has(WS_GROUP))
        ++last;
    return { first, last };
}

// The first element after `from` for which `isWanted` holds, round and round and at last `from` itself.
template <typename Items, typename IsFrom, typename IsWanted>
auto Step(const Items& items, Direction direction, IsFrom isFrom, IsWanted isWanted) -> const
    typename Items::value_type*
{
    const auto count = items.size();
    const auto found = std::find_if(items.begin(), items.end(), isFrom);
    const std::size_t step = direction == Direction::Forward ? 1 : count - 1;
    std::size_t index = static_cast<std::size_t>(found - items.begin());
    if (found == items.end()) // so that the first step lands on the first element, or on the last
        index = direction == Direction::Forward ? count - 1 : 0;
    for (std::size_t steps = 0; steps < count; ++steps) {
        index = (index + step) % count;
        if (isWanted(items[index]))
            return &items[index];
    }
    return nullptr;
}

} // namespace

HWND NextTabStop(HWND dialog, HWND from, Direction direction)
{
    std::vector<Stop> stops;
    LockedDesktop desktop;
    const WindowRecord* const record = desktop->windows.Find(dialog);
    if (record == nullptr)
        return nullptr;
    ListStops(*record, true, stops);
    const Stop* const next = Step(
        stops, direction, [&](const Stop& stop) { return stop.window == from; },
        [](const Stop& stop) { return stop.isStop; });
    return next == nullptr ? nullptr : next->window;
}

HWND NextInGroup(HWND dialog, HWND from, Direction direction)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop->windows.Find(dialog);
    if (record == nullptr || record->children.empty())
        return nullptr;
    const WindowRecord* const start = desktop->windows.Find(from);
    if (from != nullptr && (start == nullptr || start == record || !IsSameOrDescendant(record, start)))
        return nullptr;
    const auto group = start == nullptr ? record->children : GroupOf(*start);
    WindowRecord* const* const next = Step(
        group, direction, [&](const WindowRecord* member) { return member == start; },
        [](const WindowRecord* member) { return IsUsable(*member); });
    return next == nullptr ? nullptr : (*next)->handle;
}

} // namespace cardsong::user
