#include "platform/linux/user/dialog_default_button.h"

#include "platform/linux/user/desktop.h"
#include "platform/linux/user/window_tree.h"

namespace cardsong::user {

namespace {

// False for null.
bool HasCode(HWND control, LRESULT code)
{
    return control != nullptr && (SendMessageW(control, WM_GETDLGCODE, 0, 0) & code) != 0;
}

void SetLook(HWND button, DWORD type)
{
    SendMessageW(button, BM_SETSTYLE, type, TRUE);
}

HWND DefaultLookingButton(HWND dialog)
{
    for (HWND child : ChildrenOf(dialog))
        if (HasCode(child, DLGC_DEFPUSHBUTTON))
            return child;
    return nullptr;
}

} // namespace

HWND FindControl(HWND dialog, LONG id)
{
    if (id == 0)
        return nullptr;
    if (const HWND exact = GetDlgItem(dialog, id))
        return exact;
    for (HWND child : ChildrenOf(dialog))
        if (static_cast<WORD>(GetDlgCtrlID(child)) == static_cast<WORD>(id))
            return child;
    return nullptr;
}

LONG DefaultId(HWND dialog)
{
    const auto answer = static_cast<ULONG_PTR>(SendMessageW(dialog, DM_GETDEFID, 0, 0));
    return HIWORD(answer) == DC_HASDEFID ? LOWORD(answer) : 0;
}

void SetDefaultId(HWND dialog, LONG id)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop->windows.Find(dialog);
    if (record != nullptr && record->dialog != nullptr)
        record->dialog->defaultId = id;
}

LRESULT AnswerDefaultId(HWND dialog)
{
    {
        LockedDesktop desktop;
        const WindowRecord* const record = desktop->windows.Find(dialog);
        if (record == nullptr || record->dialog == nullptr)
            return 0;
        const LONG id = record->dialog->defaultId;
        if (id != 0)
            return MAKELONG(static_cast<WORD>(id), DC_HASDEFID);
    }
    const HWND looking = DefaultLookingButton(dialog);
    return looking == nullptr ? 0 : MAKELONG(static_cast<WORD>(GetDlgCtrlID(looking)), DC_HASDEFID);
}

void ChangeDefault(HWND dialog, LONG id)
{
    const HWND before = FindControl(dialog, DefaultId(dialog));
    const HWND after = FindControl(dialog, id);
    SetDefaultId(dialog, id);
    if (before != after && HasCode(before, DLGC_DEFPUSHBUTTON))
        SetLook(before, BS_PUSHBUTTON);
    if (HasCode(after, DLGC_UNDEFPUSHBUTTON))
        SetLook(after, BS_DEFPUSHBUTTON);
}

void MoveDefaultLook(HWND dialog, HWND control)
{
    const HWND looking = DefaultLookingButton(dialog);
    const bool isButton = HasCode(control, DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON);
    const HWND wanted = isButton ? control : FindControl(dialog, DefaultId(dialog));
    if (looking == wanted)
        return;
    SetLook(looking, BS_PUSHBUTTON);
    if (HasCode(wanted, DLGC_UNDEFPUSHBUTTON))
        SetLook(wanted, BS_DEFPUSHBUTTON);
}

} // namespace cardsong::user
