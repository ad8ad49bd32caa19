#include "platform/linux/user/window_lifetime.h"

#include "platform/linux/ce/gdi.h"
#include "platform/linux/ce/kernel.h"
#include "platform/linux/user/activation.h"
#include "platform/linux/user/update_region.h"
#include "platform/linux/user/visible_region.h"
#include "platform/linux/user/window_tree.h"
#include "platform/linux/user/z_order.h"
#include "platform/screen_size.h"

#include <algorithm>

namespace cardsong::user {

namespace {

constexpr int kUseDefault = static_cast<int>(0x80000000);

void FillRecord(WindowRecord& record, const CREATESTRUCTW& description, const std::shared_ptr<WindowClass>& windowClass)
{
    record.windowClass = windowClass;
    ++windowClass->windowCount;
    record.procedure = windowClass->procedure;
    record.style = static_cast<DWORD>(description.style) & ~WS_VISIBLE;
    if (!record.Has(WS_CHILD))
        record.style |= WS_CLIPSIBLINGS;
    record.exStyle = description.dwExStyle;
    record.instance = description.hInstance;
    record.id = reinterpret_cast<LONG_PTR>(description.hMenu);
    record.rect = { description.x, description.y, description.x + std::max(description.cx, 0),
                    description.y + std::max(description.cy, 0) };
    if (description.lpszName != nullptr)
        record.text = description.lpszName;
    record.extra.resize(static_cast<std::size_t>(windowClass->extraBytes));
}

// A window that is no child is owned by the top-level window of what was given as its parent.
bool FindPlace(Desktop& desktop, WindowRecord& record, HWND parentOrOwner)
{
    WindowRecord* const given = desktop.windows.Find(parentOrOwner);
    if (parentOrOwner != nullptr && given == nullptr) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return false;
    }
    if (record.Has(WS_CHILD)) {
        if (given == nullptr)
            SetLastError(ERROR_TLW_WITH_WSCHILD);
        record.parent = given;
        return given != nullptr;
    }
    record.parent = desktop.root;
    if (given != nullptr && given != desktop.root) {
        const WindowRecord* const owner = TopLevelOf(given);
        record.owner = owner->handle;
        record.exStyle |= owner->exStyle & WS_EX_TOPMOST;
    }
    return true;
}

HWND AddWindow(const CREATESTRUCTW& description)
{
    const auto queue = CurrentQueue();
    LockedDesktop desktop;
    const auto windowClass = desktop->classes.Find(description.lpszClass);
    if (windowClass == nullptr) {
        SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
        return nullptr;
    }
    WindowRecord* const record = desktop->windows.Add();
    if (record == nullptr) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    FillRecord(*record, description, windowClass);
    record->queue = queue;
    if (!FindPlace(*desktop, *record, description.hwndParent)) {
        --windowClass->windowCount;
        desktop->windows.Remove(record);
        return nullptr;
    }
    LinkNewWindow(*record);
    TreeChanged(*desktop);
    return record->handle;
}

void RemoveRecord(Desktop& desktop, WindowRecord& record)
{
    while (!record.children.empty())
        RemoveRecord(desktop, *record.children.back());
    const Region covered = ClipRegion(desktop, record);
    WindowRecord* const parent = record.parent;
    ForgetUpdates(record);
    ForgetWindow(*record.queue, record.handle);
    if (desktop.foreground == record.handle)
        desktop.foreground = nullptr;
    if (record.dialog != nullptr && record.dialog->font != nullptr)
        DeleteObject(record.dialog->font);
    UnlinkWindow(record);
    --record.windowClass->windowCount;
    desktop.windows.Remove(&record);
    TreeChanged(desktop);
    ExposeBeneath(desktop, *parent, covered, nullptr);
}

void RemoveWindow(HWND window)
{
    LockedDesktop desktop;
    if (WindowRecord* const record = desktop->windows.Find(window))
        RemoveRecord(*desktop, *record);
}

void SendDestroy(HWND window)
{
    SendMessageW(window, WM_DESTROY, 0, 0);
    for (HWND child : ChildrenOf(window))
        SendDestroy(child);
}

void SendLastMessage(HWND window)
{
    for (HWND child : ChildrenOf(window))
        SendLastMessage(child);
    SendMessageW(window, WM_NCDESTROY, 0, 0);
}

// Owned windows go with their owner; one that another thread made is destroyed there.
void DestroyOwnedWindows(HWND owner)
{
    const auto self = CurrentQueue();
    std::vector<HWND> owned;
    {
        LockedDesktop desktop;
        for (const WindowRecord* window : desktop->root->children) {
            if (window->owner != owner)
                continue;
            const HWND handle = window->handle;
            if (window->queue == self)
                owned.push_back(handle);
            else
                QueueTask(*desktop, window->queue, [handle] { DestroyWindow(handle); });
        }
    }
    for (HWND window : owned)
        DestroyWindow(window);
}

// Marks the window; false when the caller may not destroy it.
bool BeginDestroying(HWND window, bool& isChild)
{
    const auto& self = CurrentQueue();
    LockedDesktop desktop;
    WindowRecord* const record = desktop.Find(window);
    if (record == nullptr || record->isBeingDestroyed)
        return false;
    if (record->queue != self) {
        SetLastError(ERROR_ACCESS_DENIED);
        return false;
    }
    record->isBeingDestroyed = true;
    isChild = !record->IsTopLevel();
    return true;
}

void HideForDestroying(HWND window, bool isChild)
{
    if (isChild)
        ShowWindow(window, SW_HIDE);
    else
        SetWindowPos(window, nullptr, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_HIDEWINDOW);
}

// Sends the messages of a birth. False when the window's procedure refused it.
bool Announce(HWND window, CREATESTRUCTW& description)
{
    const auto parameter = reinterpret_cast<LPARAM>(&description);
    if (SendMessageW(window, WM_NCCREATE, 0, parameter) == 0) {
        RemoveWindow(window);
        return false;
    }
    if (SendMessageW(window, WM_CREATE, 0, parameter) == -1) {
        DestroyWindow(window);
        return false;
    }
    RECT rect{};
    POINT corner{};
    {
        LockedDesktop desktop;
        const WindowRecord* const record = desktop->windows.Find(window);
        if (record == nullptr)
            return false;
        rect = record->rect;
        corner = { rect.left, rect.top };
    }
    SendMessageW(window, WM_SIZE, SIZE_RESTORED, MAKELPARAM(rect.right - rect.left, rect.bottom - rect.top));
    SendMessageW(window, WM_MOVE, 0, MAKELPARAM(corner.x, corner.y));
    return IsWindow(window) != FALSE;
}

} // namespace

void RemoveWindowsOfThread(Desktop& desktop, const std::shared_ptr<ThreadQueue>& queue)
{
    const auto findOwn = [&](auto&& self, WindowRecord& record) -> WindowRecord* {
        for (WindowRecord* child : record.children) {
            if (child->queue == queue)
                return child;
            if (WindowRecord* const found = self(self, *child))
                return found;
        }
        return nullptr;
    };
    while (WindowRecord* const record = findOwn(findOwn, *desktop.root))
        RemoveRecord(desktop, *record);
}

} // namespace cardsong::user

using namespace cardsong::user;

HWND CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR text, DWORD style, int x, int y, int widthPx,
                     int heightPx, HWND parent, HMENU menuOrId, HINSTANCE instance, LPVOID parameter)
{
    CREATESTRUCTW description{};
    description.lpCreateParams = parameter;
    description.hInstance = instance;
    description.hMenu = menuOrId;
    description.hwndParent = parent;
    const bool hasPlace = x != kUseDefault;
    const bool hasSize = widthPx != kUseDefault;
    description.x = hasPlace ? x : 0;
    description.y = hasPlace ? y : 0;
    description.cx = hasSize ? widthPx : kScreenWidthPx;
    description.cy = hasSize ? heightPx : kScreenHeightPx;
    description.style = static_cast<LONG>(style);
    description.lpszName = text;
    description.lpszClass = className;
    description.dwExStyle = exStyle;
    const HWND window = AddWindow(description);
    if (window == nullptr || !Announce(window, description))
        return nullptr;
    if ((style & WS_VISIBLE) != 0)
        ShowWindow(window, SW_SHOW);
    return IsWindow(window) != FALSE ? window : nullptr;
}

BOOL DestroyWindow(HWND window)
{
    bool isChild = false;
    if (!BeginDestroying(window, isChild))
        return FALSE;
    HideForDestroying(window, isChild);
    DestroyOwnedWindows(window);
    LeaveWindow(window);
    SendDestroy(window);
    SendLastMessage(window);
    RemoveWindow(window);
    return TRUE;
}
