#include "platform/linux/user/window_tree.h"

namespace cardsong::user {

WindowRecord* TopLevelOf(WindowRecord* record)
{
    while (record != nullptr && record->parent != nullptr && !record->IsTopLevel())
        record = record->parent;
    return record;
}

bool IsSameOrDescendant(const WindowRecord* ancestor, const WindowRecord* record)
{
    while (record != nullptr && record != ancestor)
        record = record->parent;
    return record != nullptr;
}

std::vector<HWND> ChildrenOf(HWND window)
{
    LockedDesktop desktop;
    std::vector<HWND> children;
    if (const WindowRecord* const record = desktop->windows.Find(window))
        for (const WindowRecord* child : record->children)
            children.push_back(child->handle);
    return children;
}

std::vector<HWND> TopLevelWindows(const Desktop& desktop)
{
    std::vector<HWND> windows;
    for (const WindowRecord* window : desktop.root->children)
        windows.push_back(window->handle);
    return windows;
}

} // namespace cardsong::user
