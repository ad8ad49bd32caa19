#include "platform/linux/user/dialog_focus.h"

#include "platform/linux/user/desktop.h"
#include "platform/linux/user/dialog_default_button.h"
#include "platform/linux/user/dialog_tab_order.h"
#include "platform/linux/user/window_tree.h"

namespace cardsong::user {

namespace {

HWND TakeSavedFocus(HWND dialog)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop->windows.Find(dialog);
    if (record == nullptr || record->dialog == nullptr)
        return nullptr;
    const HWND saved = record->dialog->savedFocus;
    record->dialog->savedFocus = nullptr;
    return desktop->windows.Find(saved) == nullptr ? nullptr : saved;
}

} // namespace

bool IsInside(HWND dialog, HWND window)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop->windows.Find(dialog);
    const WindowRecord* const other = desktop->windows.Find(window);
    return record != nullptr && other != nullptr && other != record && IsSameOrDescendant(record, other);
}

void FocusControl(HWND dialog, HWND control)
{
    if (control == nullptr)
        return;
    MoveDefaultLook(dialog, control);
    SetFocus(control);
}

void SaveDialogFocus(HWND dialog)
{
    const HWND focus = GetFocus();
    if (!IsInside(dialog, focus))
        return;
    LockedDesktop desktop;
    const WindowRecord* const record = desktop->windows.Find(dialog);
    if (record != nullptr && record->dialog != nullptr)
        record->dialog->savedFocus = focus;
}

void RestoreSavedFocus(HWND dialog)
{
    if (const HWND saved = TakeSavedFocus(dialog))
        SetFocus(saved);
}

void RestoreDialogFocus(HWND dialog)
{
    HWND control = TakeSavedFocus(dialog);
    if (control == nullptr)
        control = NextTabStop(dialog, nullptr, Direction::Forward);
    if (control == nullptr)
        control = NextInGroup(dialog, nullptr, Direction::Forward);
    SetFocus(control == nullptr ? dialog : control);
}

} // namespace cardsong::user
