// BeginPaint and UpdateWindow: who paints when, and that a window is erased before it is painted.
#include "platform/linux/ce/gdi.h"
#include "platform/linux/ce/kernel.h"
#include "platform/linux/user/frames.h"
#include "platform/linux/user/screen_contexts.h"
#include "platform/linux/user/update_region.h"
#include "platform/linux/user/window_tree.h"

namespace cardsong::user {

namespace {

// The window and all windows inside it, of whatever thread, parents first.
void ListTree(const WindowRecord& record, std::vector<HWND>& windows)
{
    windows.push_back(record.handle);
    for (const WindowRecord* child : record.children)
        ListTree(*child, windows);
}

// What UpdateWindow painted is seen at once, unless the thread draws or has more to paint.
void ShowUpdates(const std::shared_ptr<ThreadQueue>& self)
{
    LockedDesktop desktop;
    const auto anyWindow = [](HWND) { return true; };
    if (self->heldContexts == 0 && FindWindowToPaint(*desktop, self, anyWindow) == nullptr)
        ShowFrame(*desktop, *self);
}

} // namespace

} // namespace cardsong::user

using namespace cardsong::user;

HDC BeginPaint(HWND window, PAINTSTRUCT* paint)
{
    if (paint == nullptr) {
        ValidateRect(window, nullptr);
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const auto& self = CurrentQueue();
    bool erase = false;
    *paint = {};
    {
        LockedDesktop desktop;
        WindowRecord* const record = desktop.Find(window);
        if (record == nullptr || record->queue == nullptr)
            return nullptr;
        erase = record->eraseUpdate;
        HeldContext held;
        held.window = window;
        held.isPaint = true;
        held.paintClip = TakeUpdate(*record);
        TopLevelOf(record)->paintHasBegun = true;
        POINT origin{};
        Region drawable = DrawableRegion(*desktop, held, origin);
        drawable.Translate(-origin.x, -origin.y);
        paint->rcPaint = drawable.Bounds();
        paint->hdc = HoldContext(*desktop, std::move(held), self);
    }
    if (erase)
        paint->fErase =
            SendMessageW(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(paint->hdc), 0) == 0 ? TRUE : FALSE;
    return paint->hdc;
}

BOOL EndPaint(HWND, const PAINTSTRUCT* paint)
{
    if (paint == nullptr)
        return FALSE;
    LockedDesktop desktop;
    ReleaseContext(*desktop, paint->hdc);
    return TRUE;
}

BOOL UpdateWindow(HWND window)
{
    std::vector<HWND> windows;
    {
        LockedDesktop desktop;
        const WindowRecord* const record = desktop.Find(window);
        if (record == nullptr)
            return FALSE;
        ListTree(*record, windows);
    }
    for (HWND candidate : windows) {
        bool isDue = false;
        {
            LockedDesktop desktop;
            WindowRecord* const record = desktop->windows.Find(candidate);
            isDue = record != nullptr && IsDuePaint(*desktop, *record);
        }
        if (isDue)
            SendMessageW(candidate, WM_PAINT, 0, 0);
    }
    ShowUpdates(CurrentQueue());
    return TRUE;
}
