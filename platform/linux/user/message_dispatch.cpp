// From a message to the procedure that answers it: a timer's own or its window's.
#include "platform/linux/ce/kernel.h"
#include "platform/linux/user/desktop.h"

using namespace cardsong::user;

LRESULT DispatchMessageW(const MSG* message)
{
    if (message->message == WM_TIMER && message->lParam != 0) {
        const auto procedure = reinterpret_cast<TIMERPROC>(message->lParam);
        procedure(message->hwnd, WM_TIMER, message->wParam, GetTickCount());
        return 0;
    }
    if (message->hwnd == nullptr)
        return 0;
    const auto& self = CurrentQueue();
    WNDPROC procedure = nullptr;
    {
        LockedDesktop desktop;
        const WindowRecord* const record = desktop.Find(message->hwnd);
        if (record != nullptr && record->queue == self)
            procedure = record->procedure;
    }
    return procedure == nullptr ? 0 : procedure(message->hwnd, message->message, message->wParam, message->lParam);
}

LRESULT CallWindowProcW(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return procedure == nullptr ? 0 : procedure(window, message, wParam, lParam);
}
