#include "platform/linux/user/message_filter.h"

#include "platform/linux/user/desktop.h"
#include "platform/linux/user/window_tree.h"

namespace cardsong::user {

bool MessageFilter::AllowsWindow(const Desktop& desktop, HWND candidate) const
{
    if (onlyThread)
        return candidate == nullptr;
    if (window == nullptr || window == candidate)
        return true;
    const WindowRecord* const record = desktop.windows.Find(candidate);
    return record != nullptr && IsSameOrDescendant(desktop.windows.Find(window), record);
}

} // namespace cardsong::user
