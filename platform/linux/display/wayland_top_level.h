// The player's window as the desktop knows it: name, icon, size, activity, frame and close button; no pixels. The
// display's thread only.
#pragma once

#include "platform/ce.h"
#include "platform/linux/display/wayland_objects.h"

#include <cstdint>
#include <utility>

struct wl_array;

namespace cardsong::display {

class WaylandGlobals;

class WaylandTopLevel {
public:
    WaylandTopLevel() = default;
    WaylandTopLevel(const WaylandTopLevel&) = delete;
    WaylandTopLevel& operator=(const WaylandTopLevel&) = delete;

    // Gives `surface` its role. `smallest`: the user cannot make it smaller, in a window's units. Nothing of `globals`
    // is missing.
    void Open(const WaylandGlobals& globals, wl_surface& surface, SIZE smallest, bool fullScreen);
    void Close();
    // Whether the desktop has told a state since the last call: the next commit of the surface obeys it.
    bool TakeConfigured() { return std::exchange(m_isConfigured, false); }
    // The size that the desktop asks for, in a window's units; 0: as the window likes.
    SIZE AskedSize() const { return m_size; }
    // A keyboard sends its keys here, or no longer. A window is active that has one, or that the desktop calls so:
    // a device with a touch screen alone has no keyboard.
    void SetKeyboardFocus(bool hasIt);
    // Opens the desktop's menu of the window (move, close and the like) at a place in it, for a button pressed there.
    // Nothing where the desktop draws a frame, which has all that.
    void ShowMenu(wl_seat& seat, std::uint32_t serial, int x, int y) const;

private:
    void Listen();
    void Configure(int width, int height, const wl_array& states);
    void Apply(std::uint32_t serial);
    void SetFrame(std::uint32_t mode);
    void TellActivity();

    WaylandPtr<xdg_surface> m_surface;
    WaylandPtr<xdg_toplevel> m_topLevel;
    WaylandPtr<zxdg_toplevel_decoration_v1> m_decoration;
    SIZE m_nextSize{}; // in force when the desktop has told the rest
    SIZE m_size{};
    bool m_isConfigured = false;
    bool m_hasFrame = false;
    bool m_isActivated = false;
    bool m_hasKeyboard = false;
    bool m_isActive = false; // as was told
};

} // namespace cardsong::display
