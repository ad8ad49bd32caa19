#include "platform/linux/user/double_click.h"

#include <cstdlib>

namespace cardsong::user {

namespace {

constexpr std::uint64_t kDoubleClickMs = 500;
constexpr int kDoubleClickPx = 4; // how far the second tap may lie from the first

} // namespace

bool IsDoubleClick(const Desktop& desktop, const ThreadQueue& queue, HWND window, const InputEvent& event)
{
    if (!queue.lastPress.has_value() || queue.lastPress->window != window)
        return false;
    const WindowRecord* const record = desktop.windows.Find(window);
    if (record == nullptr || (record->windowClass->style & CS_DBLCLKS) == 0)
        return false;
    const Press& last = *queue.lastPress;
    return event.timeMs - last.timeMs <= kDoubleClickMs && std::abs(event.at.x - last.at.x) <= kDoubleClickPx &&
           std::abs(event.at.y - last.at.y) <= kDoubleClickPx;
}

void RememberPress(ThreadQueue& queue, const MSG& message, const InputEvent& event)
{
    queue.lastPress.reset();
    if (message.message == WM_LBUTTONDOWN)
        queue.lastPress = Press{ message.hwnd, event.at, event.timeMs };
}

} // namespace cardsong::user
