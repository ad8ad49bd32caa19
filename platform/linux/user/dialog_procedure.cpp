// The class procedure of dialogs: asks the program's dialog procedure, then does what every dialog does.
#include "platform/linux/user/desktop.h"
#include "platform/linux/user/dialog_default_button.h"
#include "platform/linux/user/dialog_focus.h"
#include "platform/linux/user/dialog_tab_order.h"

#include "platform/linux/ce/gdi.h"

namespace cardsong::user {

namespace {

DLGPROC ProgramProcedure(HWND dialog)
{
    return reinterpret_cast<DLGPROC>(GetWindowLongPtrW(dialog, DWLP_DLGPROC));
}

// What the program's procedure returns for these is the answer itself.
bool AnswersDirectly(UINT message)
{
    return message == WM_CTLCOLORBTN || message == WM_CTLCOLORSTATIC || message == WM_INITDIALOG;
}

void GoToControl(HWND dialog, WPARAM wParam, bool isHandle)
{
    const auto direction = wParam == 0 ? Direction::Forward : Direction::Backward;
    const HWND control = isHandle ? reinterpret_cast<HWND>(wParam) : NextTabStop(dialog, GetFocus(), direction);
    FocusControl(dialog, control);
}

void AskToCancel(HWND dialog)
{
    const HWND cancel = GetDlgItem(dialog, IDCANCEL);
    if (cancel == nullptr || IsWindowEnabled(cancel) != FALSE)
        PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), reinterpret_cast<LPARAM>(cancel));
}

LRESULT Erase(HWND dialog, HDC context)
{
    RECT client{};
    GetClientRect(dialog, &client);
    FillRect(context, &client, static_cast<HBRUSH>(GetStockObject(LTGRAY_BRUSH)));
    return 1;
}

LRESULT DoDefault(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_ERASEBKGND: return Erase(dialog, reinterpret_cast<HDC>(wParam));
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE)
            SaveDialogFocus(dialog);
        else
            RestoreSavedFocus(dialog);
        return 0;
    case WM_SHOWWINDOW:
        if (wParam == FALSE)
            SaveDialogFocus(dialog);
        return 0;
    case WM_SETFOCUS: RestoreDialogFocus(dialog); return 0;
    case DM_SETDEFID: ChangeDefault(dialog, static_cast<LONG>(wParam)); return 1;
    case DM_GETDEFID: return AnswerDefaultId(dialog);
    case WM_NEXTDLGCTL: GoToControl(dialog, wParam, LOWORD(static_cast<ULONG_PTR>(lParam)) != 0); return 0;
    case WM_CLOSE: AskToCancel(dialog); return 0;
    default: return DefWindowProcW(dialog, message, wParam, lParam);
    }
}

} // namespace

LRESULT CALLBACK DialogClassProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    const DLGPROC procedure = ProgramProcedure(dialog);
    if (procedure != nullptr) {
        SetWindowLongPtrW(dialog, DWLP_MSGRESULT, 0);
        const INT_PTR isDone = procedure(dialog, message, wParam, lParam);
        if (AnswersDirectly(message) && (isDone != 0 || message == WM_INITDIALOG))
            return isDone;
        if (isDone != 0)
            return GetWindowLongPtrW(dialog, DWLP_MSGRESULT);
    }
    return IsWindow(dialog) != FALSE ? DoDefault(dialog, message, wParam, lParam) : 0;
}

} // namespace cardsong::user
