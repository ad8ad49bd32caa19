// The longs that belong to each window: style, id, procedure, the program's own bytes.
#include "platform/linux/ce/kernel.h"
#include "platform/linux/user/visible_region.h"

#include <cstring>

namespace cardsong::user {

namespace {

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
