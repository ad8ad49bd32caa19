// Showing, hiding, enabling: a window's states and their effects on focus and activation.
#include "platform/linux/user/focus_and_activation.h"
#include "platform/linux/user/visible_region.h"
#include "platform/linux/user/window_tree.h"

namespace cardsong::user {

namespace {

constexpr UINT kStay = SWP_NOMOVE | SWP_NOSIZE;

struct State {
    bool exists = false;
    bool isVisible = false;
    bool isTopLevel = false;
    HWND parent = nullptr; // null for a top-level window
};

State StateOf(HWND window)
{
    LockedDesktop desktop;
    State state;
    const WindowRecord* const record = desktop.Find(window);
    if (record == nullptr || record->parent == nullptr)
        return state;
    state.exists = true;
    state.isVisible = record->Has(WS_VISIBLE);
    state.isTopLevel = record->IsTopLevel();
    state.parent = state.isTopLevel ? nullptr : record->parent->handle;
    return state;
}

// The window's thread has its focus or capture in `window`.
struct Held {
    bool focus = false;
    bool capture = false;
    bool isOurs = false;
};

Held HeldBy(HWND window)
{
    const auto& self = CurrentQueue();
    LockedDesktop desktop;
    Held held;
    const WindowRecord* const record = desktop->windows.Find(window);
    if (record == nullptr || record->queue == nullptr)
        return held;
    held.isOurs = record->queue == self;
    held.focus = record->queue->focus == window;
    held.capture = record->queue->capture == window;
    return held;
}

void Show(HWND window, const State& state, int command)
{
    if (state.isVisible && command != SW_SHOWNA)
        return;
    UINT flags = kStay | SWP_SHOWWINDOW;
    if (command == SW_SHOWNOACTIVATE || !state.isTopLevel)
        flags |= SWP_NOACTIVATE | SWP_NOZORDER;
    else if (command == SW_SHOWNA)
        flags |= SWP_NOACTIVATE;
    SendMessageW(window, WM_SHOWWINDOW, TRUE, 0);
    SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, flags);
}

void Hide(HWND window, const State& state)
{
    if (!state.isVisible)
        return;
    SendMessageW(window, WM_SHOWWINDOW, FALSE, 0);
    const UINT childFlags = state.isTopLevel ? 0 : SWP_NOACTIVATE | SWP_NOZORDER;
    SetWindowPos(window, nullptr, 0, 0, 0, 0, kStay | SWP_HIDEWINDOW | childFlags);
    if (state.isTopLevel)
        LeaveWindow(window);
    else if (GetFocus() == window)
        SetFocus(state.parent);
}

bool SetEnabled(HWND window, bool enable)
{
    LockedDesktop desktop;
    WindowRecord* const record = desktop.Find(window);
    if (record == nullptr)
        return false;
    record->style = enable ? record->style & ~WS_DISABLED : record->style | WS_DISABLED;
    return true;
}

// What a window loses with its being disabled is taken in its own thread.
void TakeFocusAndCapture(HWND window)
{
    const auto held = HeldBy(window);
    if (held.focus)
        ChangeFocus(nullptr);
    if (held.capture)
        ReleaseCapture();
}

} // namespace

} // namespace cardsong::user

using namespace cardsong::user;

BOOL ShowWindow(HWND window, int command)
{
    const auto state = StateOf(window);
    if (!state.exists)
        return FALSE;
    if (command == SW_HIDE)
        Hide(window, state);
    else if (command == SW_SHOWNORMAL || command == SW_SHOW || command == SW_SHOWNOACTIVATE || command == SW_SHOWNA)
        Show(window, state, command);
    return state.isVisible ? TRUE : FALSE;
}

BOOL IsWindowVisible(HWND window)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop.Find(window);
    return record != nullptr && IsShown(*record) ? TRUE : FALSE;
}

BOOL EnableWindow(HWND window, BOOL enable)
{
    const bool wasEnabled = IsWindowEnabled(window) != FALSE;
    if (!StateOf(window).exists)
        return FALSE;
    const bool changes = wasEnabled != (enable != FALSE);
    if (enable == FALSE) {
        if (changes)
            SendMessageW(window, WM_CANCELMODE, 0, 0);
        SetEnabled(window, false);
        if (HeldBy(window).isOurs)
            TakeFocusAndCapture(window);
        else {
            LockedDesktop desktop;
            if (const WindowRecord* const record = desktop->windows.Find(window))
                QueueTask(*desktop, record->queue, [window] { TakeFocusAndCapture(window); });
        }
    } else
        SetEnabled(window, true);
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
