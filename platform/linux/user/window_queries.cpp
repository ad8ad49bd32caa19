// Questions about windows: places, relations, names.
#include "platform/linux/user/foreign_windows.h"
#include "platform/linux/user/visible_region.h"
#include "platform/linux/user/window_tree.h"

#include <algorithm>

namespace cardsong::user {

namespace {

constexpr DWORD kProcessId = 1; // one process shares this desktop

HWND HandleOf(const WindowRecord* record)
{
    return record == nullptr ? nullptr : record->handle;
}

HWND SiblingOf(const WindowRecord& record, UINT relation)
{
    if (record.parent == nullptr)
        return nullptr;
    const auto& siblings = record.parent->children;
    const auto self = std::find(siblings.begin(), siblings.end(), &record);
    switch (relation) {
    case GW_HWNDFIRST: return HandleOf(siblings.front());
    case GW_HWNDLAST: return HandleOf(siblings.back());
    case GW_HWNDNEXT: return self + 1 == siblings.end() ? nullptr : HandleOf(self[1]);
    case GW_HWNDPREV: return self == siblings.begin() ? nullptr : HandleOf(self[-1]);
    default: return nullptr;
    }
}

bool Offset(HWND window, LPPOINT point, int sign)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop.Find(window);
    if (record == nullptr || point == nullptr)
        return false;
    const POINT origin = ScreenOrigin(*record);
    point->x += sign * origin.x;
    point->y += sign * origin.y;
    return true;
}

bool Matches(const WindowRecord& record, const WindowClass* wantedClass, const std::u16string* wantedText)
{
    if (wantedClass != nullptr && record.windowClass.get() != wantedClass)
        return false;
    return wantedText == nullptr || FoldName(record.text) == *wantedText;
}

HWND FindOwnWindow(LPCWSTR className, LPCWSTR text)
{
    const auto wantedText = text == nullptr ? std::u16string() : FoldName(text);
    LockedDesktop desktop;
    const auto wantedClass = className == nullptr ? nullptr : desktop->classes.Find(className);
    if (className != nullptr && wantedClass == nullptr)
        return nullptr;
    for (const WindowRecord* record : desktop->root->children)
        if (Matches(*record, wantedClass.get(), text == nullptr ? nullptr : &wantedText))
            return record->handle;
    return nullptr;
}

} // namespace

} // namespace cardsong::user

using namespace cardsong::user;

BOOL IsWindow(HWND window)
{
    {
        LockedDesktop desktop;
        if (desktop.Find(window) != nullptr)
            return TRUE;
    }
    return IsForeignWindow(window) ? TRUE : FALSE;
}

BOOL GetWindowRect(HWND window, LPRECT rect)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop.Find(window);
    if (record == nullptr || rect == nullptr)
        return FALSE;
    const POINT origin = ScreenOrigin(*record);
    *rect = { origin.x, origin.y, origin.x + record->rect.right - record->rect.left,
              origin.y + record->rect.bottom - record->rect.top };
    return TRUE;
}

BOOL GetClientRect(HWND window, LPRECT rect)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop.Find(window);
    if (record == nullptr || rect == nullptr)
        return FALSE;
    *rect = { 0, 0, record->rect.right - record->rect.left, record->rect.bottom - record->rect.top };
    return TRUE;
}

BOOL ClientToScreen(HWND window, LPPOINT point)
{
    return Offset(window, point, 1) ? TRUE : FALSE;
}

BOOL ScreenToClient(HWND window, LPPOINT point)
{
    return Offset(window, point, -1) ? TRUE : FALSE;
}

HWND GetParent(HWND window)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop.Find(window);
    if (record == nullptr || record->parent == nullptr)
        return nullptr;
    if (!record->IsTopLevel())
        return record->parent->handle;
    return record->Has(WS_POPUP) ? record->owner : nullptr;
}

HWND GetWindow(HWND window, UINT relation)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop.Find(window);
    if (record == nullptr)
        return nullptr;
    if (relation == GW_OWNER)
        return record->owner;
    if (relation == GW_CHILD)
        return record->children.empty() ? nullptr : record->children.front()->handle;
    return SiblingOf(*record, relation);
}

HWND GetDesktopWindow()
{
    LockedDesktop desktop;
    return desktop->root->handle;
}

HWND FindWindowW(LPCWSTR className, LPCWSTR text)
{
    const HWND own = FindOwnWindow(className, text);
    // Of windows of other programs nothing but the class is known.
    return own != nullptr || className == nullptr || text != nullptr ? own : FindForeignWindow(className);
}

BOOL EnumWindows(WNDENUMPROC callback, LPARAM parameter)
{
    std::vector<HWND> windows;
    {
        LockedDesktop desktop;
        windows = TopLevelWindows(*desktop);
    }
    for (HWND window : windows)
        if (IsWindow(window) && callback(window, parameter) == FALSE)
            return FALSE;
    return TRUE;
}

HWND GetDlgItem(HWND dialog, int id)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop.Find(dialog);
    if (record == nullptr)
        return nullptr;
    for (const WindowRecord* child : record->children)
        if (static_cast<int>(child->id) == id)
            return child->handle;
    return nullptr;
}

int GetDlgCtrlID(HWND window)
{
    return static_cast<int>(GetWindowLongPtrW(window, GWLP_ID));
}

int GetClassNameW(HWND window, LPWSTR buffer, int units)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop.Find(window);
    if (record == nullptr || buffer == nullptr || units <= 0)
        return 0;
    const std::u16string name = record->windowClass == nullptr ? u"#32769" : record->windowClass->name;
    const auto length = std::min(name.size(), static_cast<std::size_t>(units) - 1);
    std::copy_n(name.data(), length, buffer);
    buffer[length] = 0;
    return static_cast<int>(length);
}

DWORD GetWindowThreadProcessId(HWND window, LPDWORD processId)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop.Find(window);
    if (record == nullptr || record->queue == nullptr)
        return 0;
    if (processId != nullptr)
        *processId = kProcessId;
    return record->queue->threadId;
}
