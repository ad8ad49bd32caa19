#include "app/foreground.h"

namespace {

struct OwnedWindowSearch {
    HWND owner;
    HWND found;
};

bool IsOwnedBy(HWND window, HWND owner)
{
    for (HWND above = GetWindow(window, GW_OWNER); above != nullptr; above = GetWindow(above, GW_OWNER))
        if (above == owner)
            return true;
    return false;
}

bool MayBeActivated(HWND window)
{
    const auto exStyle = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE));
    return IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE && (exStyle & WS_EX_NOACTIVATE) == 0;
}

BOOL CALLBACK LookAtWindow(HWND window, LPARAM parameter)
{
    auto& search = *reinterpret_cast<OwnedWindowSearch*>(parameter);
    if (window != search.owner && !(MayBeActivated(window) && IsOwnedBy(window, search.owner)))
        return TRUE;
    search.found = window;
    return FALSE;
}

} // namespace

HWND FindOwnedActiveWindow(HWND window)
{
    OwnedWindowSearch search{ window, nullptr };
    EnumWindows(LookAtWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

void ComeToFront(HWND window)
{
    // The lowest bit asks the window manager for the last active pop-up of the window.
    const auto handle = reinterpret_cast<ULONG_PTR>(FindOwnedActiveWindow(window)) | 1U;
    SetForegroundWindow(reinterpret_cast<HWND>(handle));
}
