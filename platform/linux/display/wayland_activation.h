// Asks a Wayland desktop to bring the window before others. The desktop decides: it may only mark it. The display's
// thread only.
#pragma once

#include "platform/linux/display/wayland_objects.h"
#include "platform/linux/display/wayland_seats.h"

namespace cardsong::display {

class WaylandActivation {
public:
    // `activation` is null where the desktop cannot do it: nothing happens then. Both are borrowed.
    void Open(xdg_activation_v1* activation, wl_surface& surface);
    void Close() { m_token.reset(); }
    // For a window that the user has just started, if who started it has left the proof for it.
    void TellStart() const;
    // `press`: what the user did here last.
    void Raise(const WaylandPress& press);

private:
    xdg_activation_v1* m_activation = nullptr;
    wl_surface* m_surface = nullptr;
    WaylandPtr<xdg_activation_token_v1> m_token; // asked for, not there yet
};

} // namespace cardsong::display
