#include "platform/linux/display/wayland_globals.h"

#include <algorithm>
#include <wayland-client.h>
#include <xdg-activation-v1-client-protocol.h>
#include <xdg-decoration-unstable-v1-client-protocol.h>
#include <xdg-shell-client-protocol.h>

namespace cardsong::display {

namespace {

constexpr std::uint32_t kCompositorVersion = 4; // the first whose surfaces are damaged in pixels
constexpr std::uint32_t kNewestShell = 4;       // the last whose events mean anything here

template <typename Object>
void Bind(wl_registry& registry, std::uint32_t name, const wl_interface& interface, std::uint32_t version,
          WaylandPtr<Object>& object)
{
    if (!object) // what is offered a second time adds nothing
        object.reset(static_cast<Object*>(wl_registry_bind(&registry, name, &interface, version)));
}

// A compositor ends the connection of who does not answer.
constexpr xdg_wm_base_listener kShellListener = { [](void*, xdg_wm_base* shell, std::uint32_t serial) {
    xdg_wm_base_pong(shell, serial);
} };

} // namespace

void WaylandGlobals::Ask(wl_display& display)
{
    static constexpr wl_registry_listener kListener = {
        .global = [](void* data, wl_registry*, std::uint32_t name, const char* interface,
                     std::uint32_t version) { static_cast<WaylandGlobals*>(data)->Add(name, interface, version); },
        .global_remove = [](void* data, wl_registry*,
                            std::uint32_t name) { static_cast<WaylandGlobals*>(data)->Remove(name); },
    };
    m_registry.reset(wl_display_get_registry(&display));
    wl_registry_add_listener(m_registry.get(), &kListener, this);
}

void WaylandGlobals::Add(std::uint32_t name, std::string_view interface, std::uint32_t version)
{
    wl_registry& registry = *m_registry;
    if (interface == wl_compositor_interface.name && version >= kCompositorVersion) {
        Bind(registry, name, wl_compositor_interface, kCompositorVersion, m_compositor);
    } else if (interface == wl_shm_interface.name) {
        Bind(registry, name, wl_shm_interface, 1, m_shm);
    } else if (interface == xdg_wm_base_interface.name && !m_shell) {
        Bind(registry, name, xdg_wm_base_interface, std::min(version, kNewestShell), m_shell);
        xdg_wm_base_add_listener(m_shell.get(), &kShellListener, nullptr);
    } else if (interface == zxdg_decoration_manager_v1_interface.name) {
        Bind(registry, name, zxdg_decoration_manager_v1_interface, 1, m_decorations);
    } else if (interface == xdg_activation_v1_interface.name) {
        Bind(registry, name, xdg_activation_v1_interface, 1, m_activation);
    } else if (interface == wl_output_interface.name) {
        m_outputs.Add(registry, name, version);
    } else if (interface == wl_seat_interface.name) {
        m_seats.Add(registry, name, version);
    }
}

void WaylandGlobals::Remove(std::uint32_t name)
{
    m_outputs.Remove(name);
    m_seats.Remove(name);
}

std::string WaylandGlobals::Missing() const
{
    if (!m_compositor)
        return "wl_compositor of version 4";
    if (!m_shm)
        return wl_shm_interface.name;
    return m_shell ? std::string() : xdg_wm_base_interface.name;
}

void WaylandGlobals::Close()
{
    m_seats.Close();
    m_outputs = WaylandOutputs();
    m_activation.reset();
    m_decorations.reset();
    m_shell.reset();
    m_shm.reset();
    m_compositor.reset();
    m_registry.reset();
}

} // namespace cardsong::display
