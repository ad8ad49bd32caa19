// Which window of a thread has the pointer to itself.
#include "platform/linux/user/desktop.h"

using namespace cardsong::user;

HWND SetCapture(HWND window)
{
    const auto queue = CurrentQueue();
    HWND previous = nullptr;
    {
        LockedDesktop desktop;
        const WindowRecord* const record = window == nullptr ? nullptr : desktop.Find(window);
        if (window != nullptr && (record == nullptr || record->queue != queue))
            return nullptr;
        previous = queue->capture;
        queue->capture = window;
    }
    if (previous != nullptr) // even the window that takes it again is told
        SendMessageW(previous, WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(window));
    return previous;
}

HWND GetCapture()
{
    const auto& queue = CurrentQueue();
    LockedDesktop desktop;
    return queue->capture;
}

BOOL ReleaseCapture()
{
    const auto queue = CurrentQueue();
    HWND previous = nullptr;
    {
        LockedDesktop desktop;
        previous = queue->capture;
        queue->capture = nullptr;
    }
    if (previous != nullptr)
        SendMessageW(previous, WM_CAPTURECHANGED, 0, 0);
    return TRUE;
}
