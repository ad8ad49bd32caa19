#include "platform/linux/user/desktop.h"

#include "platform/linux/ce/gdi.h"
#include "platform/linux/ce/kernel.h"
#include "platform/linux/gdi/screen.h"
#include "platform/linux/user/frames.h"
#include "platform/linux/user/input.h"
#include "platform/linux/user/visible_region.h"
#include "platform/screen_size.h"

namespace cardsong::user {

namespace {

void ForgetContexts(Desktop& desktop)
{
    for (const auto& held : desktop.contexts)
        gdi::DestroyScreenContext(held.context);
    desktop.contexts.clear();
}

void ForgetWindows(Desktop& desktop, WindowRecord* record)
{
    for (WindowRecord* child : record->children)
        ForgetWindows(desktop, child);
    record->children.clear();
    if (record->dialog != nullptr && record->dialog->font != nullptr)
        DeleteObject(record->dialog->font);
    if (record != desktop.root)
        desktop.windows.Remove(record);
}

} // namespace

Desktop::Desktop()
{
    root = windows.Add();
    root->rect = { 0, 0, kScreenWidthPx, kScreenHeightPx };
    root->style = WS_VISIBLE | WS_CLIPCHILDREN | WS_POPUP;
    WatchRests();
}

Desktop& TheDesktop()
{
    // Never destroyed: threads may still run when the program's static objects go.
    static Desktop& desktop = *new Desktop;
    return desktop;
}

WindowRecord* LockedDesktop::Find(HWND window) const
{
    WindowRecord* const record = m_desktop.windows.Find(window);
    if (record == nullptr)
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return record;
}

void ResetWindows()
{
    LockedDesktop desktop;
    ForgetContexts(*desktop);
    ForgetWindows(*desktop, desktop->root);
    TreeChanged(*desktop);
    for (const auto& known : desktop->queues)
        if (const auto queue = known.lock())
            ClearQueue(*queue);
    desktop->classes = ClassTable();
    desktop->foreground = nullptr;
    desktop->foregroundQueue = nullptr;
    desktop->displayActive = true;
    desktop->keysDown.reset();
    desktop->earlyKeys.clear();
    desktop->pointerQueue = nullptr;
    desktop->pointerDown = false;
    desktop->pointer = {};
    desktop->hasFrame = false;
}

} // namespace cardsong::user
