// Showing and hiding, with what it does to activation and focus.
#include "platform/linux/user/activation.h"
#include "platform/linux/user/visible_region.h"

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
