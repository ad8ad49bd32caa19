// Questions about windows: places, relations, names, and the longs that belong to each window.
#include "platform/linux/ce/kernel.h"
#include "platform/linux/user/visible_region.h"
#include "platform/linux/user/window_tree.h"

#include <algorithm>
#include <cstring>

namespace cardsong::user {

namespace {

constexpr DWORD kProcessId = 1; // one process shares this desktop

// Where the window's own bytes hold a long at `index`; null when it does not fit.
std::byte* ExtraLong(WindowRecord& record, int index)
{
    const auto offset = static_cast<std::size_t>(index);
    if (index < 0 || offset + sizeof(LONG_PTR) > record.extra.size())
        return nullptr;
    return record.extra.data() + offset;
}

LONG_PTR ParentOrOwner(const WindowRecord& record)
{
    if (!record.IsTopLevel())
        return reinterpret_cast<LONG_PTR>(record.parent->handle);
    return reinterpret_cast<LONG_PTR>(record.owner);
}

LONG_PTR ReadLong(WindowRecord& record, int index)
{
    switch (index) {
    case GWLP_WNDPROC: return reinterpret_cast<LONG_PTR>(record.procedure);
    case GWLP_HINSTANCE: return reinterpret_cast<LONG_PTR>(record.instance);
    case GWLP_HWNDPARENT: return ParentOrOwner(record);
    case GWLP_ID: return record.id;
    case GWL_STYLE: return static_cast<LONG_PTR>(record.style);
    case GWL_EXSTYLE: return static_cast<LONG_PTR>(record.exStyle);
    case GWLP_USERDATA: return record.userData;
    default: break;
    }
    const std::byte* const place = ExtraLong(record, index);
    LONG_PTR value = 0;
    if (place == nullptr)
        SetLastError(ERROR_INVALID_INDEX);
    else
        std::memcpy(&value, place, sizeof value);
    return value;
}

void WriteLong(Desktop& desktop, WindowRecord& record, int index, LONG_PTR value)
{
    switch (index) {
    case GWLP_WNDPROC: record.procedure = reinterpret_cast<WNDPROC>(value); return;
    case GWLP_HINSTANCE: record.instance = reinterpret_cast<HINSTANCE>(value); return;
    case GWLP_HWNDPARENT:
        if (record.IsTopLevel())
            record.owner = reinterpret_cast<HWND>(value);
        return;
    case GWLP_ID: record.id = value; return;
    case GWL_STYLE:
        record.style = static_cast<DWORD>(value) | (record.IsTopLevel() ? WS_CLIPSIBLINGS : 0);
        TreeChanged(desktop);
        return;
    case GWL_EXSTYLE: // the band changes through SetWindowPos only
        record.exStyle = (static_cast<DWORD>(value) & ~WS_EX_TOPMOST) | (record.exStyle & WS_EX_TOPMOST);
        TreeChanged(desktop);
        return;
    case GWLP_USERDATA: record.userData = value; return;
    default: break;
    }
    if (std::byte* const place = ExtraLong(record, index))
        std::memcpy(place, &value, sizeof value);
}

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

} // namespace

} // namespace cardsong::user

using namespace cardsong::user;

LONG_PTR GetWindowLongPtrW(HWND window, int index)
{
    LockedDesktop desktop;
    WindowRecord* const record = desktop.Find(window);
    return record == nullptr || record->parent == nullptr ? 0 : ReadLong(*record, index);
}

LONG_PTR SetWindowLongPtrW(HWND window, int index, LONG_PTR value)
{
    LockedDesktop desktop;
    WindowRecord* const record = desktop.Find(window);
    if (record == nullptr || record->parent == nullptr)
        return 0;
    const LONG_PTR previous = ReadLong(*record, index);
    WriteLong(*desktop, *record, index, value);
    return previous;
}

BOOL IsWindow(HWND window)
{
    LockedDesktop desktop;
    return desktop.Find(window) != nullptr ? TRUE : FALSE;
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
