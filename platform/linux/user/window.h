// One window's record and the table that finds it by handle. Handles of destroyed windows are never taken for living
// ones.
#pragma once

#include "platform/linux/ce/user.h"
#include "platform/linux/user/region.h"
#include "platform/linux/user/window_class.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace cardsong::user {

struct ThreadQueue;

struct DialogState {
    HFONT font = nullptr; // owned
    HWND savedFocus = nullptr;
    LONG defaultId = 0; // 0: none was named
};

struct WindowRecord {
    HWND handle = nullptr;
    std::shared_ptr<WindowClass> windowClass; // null: the desktop itself
    WNDPROC procedure = nullptr;
    std::shared_ptr<ThreadQueue> queue; // of the thread that made it; null: the desktop itself
    WindowRecord* parent = nullptr;     // the desktop for top-level windows
    HWND owner = nullptr;
    std::vector<WindowRecord*> children; // topmost first
    RECT rect{};                         // in the parent's coordinates
    DWORD style = 0;
    DWORD exStyle = 0;
    LONG_PTR id = 0;
    LONG_PTR userData = 0;
    HINSTANCE instance = nullptr;
    std::u16string text;
    std::vector<std::byte> extra;
    std::unique_ptr<DialogState> dialog;
    bool isBeingDestroyed = false;

    Region update; // in the window's own coordinates; not empty: it is due a WM_PAINT
    bool eraseUpdate = false;
    bool paintHasBegun = false; // top-level windows: it or a window inside it was painted since the last frame

    // What visible_region.cpp worked out when the tree had this version.
    std::uint64_t regionVersion = 0;
    Region clip;    // screen pixels, the children's included
    Region visible; // screen pixels on which the window itself draws
    POINT origin{}; // of the client area on the screen

    bool IsTopLevel() const { return parent != nullptr && parent->parent == nullptr; }
    bool Has(DWORD styleBits) const { return (style & styleBits) == styleBits; }
};

// A handle holds the slot's number and the slot's generation; bit 0 is always clear, because SetForegroundWindow takes
// a handle with that bit set.
class WindowTable {
public:
    WindowRecord* Add();
    void Remove(WindowRecord* record);
    // Null for null, foreign and dead handles.
    WindowRecord* Find(HWND window) const;

private:
    struct Slot {
        std::unique_ptr<WindowRecord> record;
        std::uint32_t generation = 0;
    };
    std::vector<Slot> m_slots;
};

} // namespace cardsong::user
