// The arrow of the pointer over the window, from the theme of the desktop. The display's thread only.
#pragma once

#include "platform/linux/display/wayland_objects.h"

#include <cstdint>

namespace cardsong::display {

class WaylandGlobals;

class WaylandCursor {
public:
    // `globals` is borrowed; nothing of it is missing.
    void Open(const WaylandGlobals& globals) { m_globals = &globals; }
    void Close();
    // `serial`: of the event by which the pointer came. `scale`: pixels along one of the window's units. The theme is
    // loaded for the first arrow: a panel that is touched needs none.
    void Show(wl_pointer& pointer, std::uint32_t serial, int scale);
    static void Hide(wl_pointer& pointer, std::uint32_t serial);

private:
    const WaylandGlobals* m_globals = nullptr;
    WaylandPtr<wl_cursor_theme> m_theme; // owns the arrow's pixels
    int m_themeScale = 0;
    WaylandPtr<wl_surface> m_surface;
};

} // namespace cardsong::display
