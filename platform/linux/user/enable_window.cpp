// Enabling and disabling. A window that is disabled loses the focus and the capture.
#include "platform/linux/user/focus.h"

namespace cardsong::user {

namespace {

// The last error is set when there is no such window. The desktop is always enabled.
bool CanBeDisabled(HWND window)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop.Find(window);
    return record != nullptr && record->parent != nullptr;
}

void Enable(HWND window)
{
    LockedDesktop desktop;
    if (WindowRecord* const record = desktop->windows.Find(window))
        record->style &= ~WS_DISABLED;
}

// Runs in the window's own thread.
void LoseFocusAndCapture(HWND window)
{
    if (GetFocus() == window)
        ChangeFocus(nullptr);
    if (GetCapture() == window)
        ReleaseCapture();
}

void Disable(HWND window)
{
    const auto& self = CurrentQueue();
    {
        LockedDesktop desktop;
        WindowRecord* const record = desktop->windows.Find(window);
        if (record == nullptr)
            return;
        record->style |= WS_DISABLED;
        if (record->queue != self) {
            QueueTask(*desktop, record->queue, [window] { LoseFocusAndCapture(window); });
            return;
        }
    }
    LoseFocusAndCapture(window);
}

} // namespace

} // namespace cardsong::user

using namespace cardsong::user;

BOOL EnableWindow(HWND window, BOOL enable)
{
    if (!CanBeDisabled(window))
        return FALSE;
    const bool wasEnabled = IsWindowEnabled(window) != FALSE;
    const bool changes = wasEnabled != (enable != FALSE);
    if (enable != FALSE) {
        Enable(window);
    } else {
        if (changes)
            SendMessageW(window, WM_CANCELMODE, 0, 0);
        Disable(window);
    }
    if (changes)
        SendMessageW(window, WM_ENABLE, enable == FALSE ? FALSE : TRUE, 0);
    return wasEnabled ? FALSE : TRUE;
}

BOOL IsWindowEnabled(HWND window)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop.Find(window);
    return record != nullptr && !record->Has(WS_DISABLED) ? TRUE : FALSE;
}
