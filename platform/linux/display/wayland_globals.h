// What a Wayland compositor offers, as far as the display uses it. The display's thread only.
#pragma once

#include "platform/linux/display/wayland_objects.h"
#include "platform/linux/display/wayland_outputs.h"
#include "platform/linux/display/wayland_seats.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace cardsong::display {

class WaylandGlobals {
public:
    // `input` is borrowed.
    explicit WaylandGlobals(const WaylandInput& input) : m_seats(input) {}

    // Asks for all that there is and will be; the next answers of the compositor name it.
    void Ask(wl_display& display);
    // An empty text, or the name of what the display cannot do without.
    std::string Missing() const;
    // These three are there when nothing is missing.
    wl_compositor& Compositor() const { return *m_compositor; }
    wl_shm& Memory() const { return *m_shm; }
    xdg_wm_base& Shell() const { return *m_shell; }
    // These may be null.
    zxdg_decoration_manager_v1* Decorations() const { return m_decorations.get(); }
    xdg_activation_v1* Activation() const { return m_activation.get(); }
    const WaylandOutputs& Outputs() const { return m_outputs; }
    WaylandOutputs& Outputs() { return m_outputs; }
    WaylandSeats& Seats() { return m_seats; }
    // Ends all of it, before the connection.
    void Close();

private:
    void Add(std::uint32_t name, std::string_view interface, std::uint32_t version);
    void Remove(std::uint32_t name);

    WaylandPtr<wl_registry> m_registry;
    WaylandPtr<wl_compositor> m_compositor;
    WaylandPtr<wl_shm> m_shm;
    WaylandPtr<xdg_wm_base> m_shell;
    WaylandPtr<zxdg_decoration_manager_v1> m_decorations;
    WaylandPtr<xdg_activation_v1> m_activation;
    WaylandOutputs m_outputs;
    WaylandSeats m_seats;
};

} // namespace cardsong::display
