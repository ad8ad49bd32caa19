// What keys mean to a dialog: the tab order, arrows within a group, Enter for the default button, Escape for Cancel.
#include "platform/linux/user/desktop.h"
#include "platform/linux/user/dialog_default_button.h"
#include "platform/linux/user/dialog_focus.h"
#include "platform/linux/user/dialog_tab_order.h"

namespace cardsong::user {

namespace {

bool IsDialog(HWND window)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop->windows.Find(window);
    return record != nullptr && record->dialog != nullptr;
}

void SendCommand(HWND dialog, int id, HWND control)
{
    SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(static_cast<WORD>(id), BN_CLICKED), reinterpret_cast<LPARAM>(control));
}

void Enter(HWND dialog)
{
    constexpr LRESULT kPushButton = DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON;
    const HWND focus = GetFocus();
    if (IsInside(dialog, focus) && (SendMessageW(focus, WM_GETDLGCODE, 0, 0) & kPushButton)) {
        SendCommand(dialog, GetDlgCtrlID(focus), focus);
        return;
    }
    const LONG id = DefaultId(dialog);
    const HWND button = id == 0 ? GetDlgItem(dialog, IDOK) : FindControl(dialog, id);
    if (id != 0 && button != nullptr && IsWindowEnabled(button) == FALSE)
        return;
    SendCommand(dialog, id == 0 ? IDOK : id, button);
}

void Tab(HWND dialog, HWND from)
{
    const bool isBackward = GetKeyState(static_cast<int>(VK_SHIFT)) < 0;
    if (IsDialog(dialog))
        SendMessageW(dialog, WM_NEXTDLGCTL, isBackward ? 1 : 0, 0);
    else if (const HWND next = NextTabStop(dialog, from, isBackward ? Direction::Backward : Direction::Forward))
        SetFocus(next);
}

void Arrow(HWND dialog, const MSG& message)
{
    const bool isBackward = message.wParam == VK_LEFT || message.wParam == VK_UP;
    const HWND next = NextInGroup(dialog, message.hwnd, isBackward ? Direction::Backward : Direction::Forward);
    if (next != nullptr)
        SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), 1);
}

// True when the key was the dialog's to use up.
bool UseKey(HWND dialog, MSG& message)
{
    const LRESULT code = SendMessageW(message.hwnd, WM_GETDLGCODE, message.wParam, reinterpret_cast<LPARAM>(&message));
    if (code & DLGC_WANTMESSAGE)
        return false;
    switch (message.wParam) {
    case VK_TAB:
        if (code & DLGC_WANTTAB)
            return false;
        Tab(dialog, message.hwnd);
        return true;
    case VK_LEFT:
    case VK_UP:
    case VK_RIGHT:
    case VK_DOWN:
        if (code & DLGC_WANTARROWS)
            return false;
        Arrow(dialog, message);
        return true;
    case VK_ESCAPE: SendCommand(dialog, IDCANCEL, GetDlgItem(dialog, IDCANCEL)); return true;
    case VK_RETURN: Enter(dialog); return true;
    default: return false;
    }
}

} // namespace

} // namespace cardsong::user

using namespace cardsong::user;

BOOL IsDialogMessageW(HWND dialog, LPMSG message)
{
    if (IsWindow(dialog) == FALSE || dialog == GetDesktopWindow())
        return FALSE;
    if (message->hwnd != dialog && !IsInside(dialog, message->hwnd))
        return FALSE;
    if (message->message == WM_KEYDOWN && UseKey(dialog, *message))
        return TRUE;
    TranslateMessage(message);
    DispatchMessageW(message);
    return TRUE;
}
