#include "platform/linux/display/wayland_top_level.h"

#include "platform/linux/display/wayland_globals.h"
#include "platform/linux/user/input.h"

#include <algorithm>
#include <wayland-client.h>
#include <xdg-decoration-unstable-v1-client-protocol.h>
#include <xdg-shell-client-protocol.h>

namespace cardsong::display {

namespace {

bool HasState(const wl_array& states, std::uint32_t state)
{
    const auto* const first = static_cast<const std::uint32_t*>(states.data);
    const std::span all(first, first == nullptr ? 0 : states.size / sizeof(*first));
    return std::ranges::find(all, state) != all.end();
}

} // namespace

void WaylandTopLevel::Open(const WaylandGlobals& globals, wl_surface& surface, SIZE smallest, bool fullScreen)
{
    m_surface.reset(xdg_wm_base_get_xdg_surface(&globals.Shell(), &surface));
    m_topLevel.reset(xdg_surface_get_toplevel(m_surface.get()));
    if (globals.Decorations() != nullptr)
        m_decoration.reset(zxdg_decoration_manager_v1_get_toplevel_decoration(globals.Decorations(), m_topLevel.get()));
    Listen();
    xdg_toplevel_set_title(m_topLevel.get(), "Cardsong");
    xdg_toplevel_set_app_id(m_topLevel.get(), "cardsong");
    xdg_toplevel_set_min_size(m_topLevel.get(), static_cast<int>(smallest.cx), static_cast<int>(smallest.cy));
    if (m_decoration)
        zxdg_toplevel_decoration_v1_set_mode(m_decoration.get(), ZXDG_TOPLEVEL_DECORATION_V1_MODE_SERVER_SIDE);
    if (fullScreen)
        xdg_toplevel_set_fullscreen(m_topLevel.get(), nullptr);
}

void WaylandTopLevel::Listen()
{
    static constexpr xdg_surface_listener kSurfaceListener = { [](void* data, xdg_surface*, std::uint32_t serial) {
        static_cast<WaylandTopLevel*>(data)->Apply(serial);
    } };
    static constexpr xdg_toplevel_listener kTopLevelListener = {
        .configure = [](void* data, xdg_toplevel*, int width, int height,
                        wl_array* states) { static_cast<WaylandTopLevel*>(data)->Configure(width, height, *states); },
        .close = [](void*, xdg_toplevel*) { user::PressExitKey(); },
        .configure_bounds = kIgnoreEvent,
        .wm_capabilities = kIgnoreEvent,
    };
    static constexpr zxdg_toplevel_decoration_v1_listener kDecorationListener = {
        [](void* data, zxdg_toplevel_decoration_v1*, std::uint32_t mode) {
            static_cast<WaylandTopLevel*>(data)->SetFrame(mode);
        }
    };
    xdg_surface_add_listener(m_surface.get(), &kSurfaceListener, this);
    xdg_toplevel_add_listener(m_topLevel.get(), &kTopLevelListener, this);
    if (m_decoration)
        zxdg_toplevel_decoration_v1_add_listener(m_decoration.get(), &kDecorationListener, this);
}

void WaylandTopLevel::Close()
{
    m_decoration.reset();
    m_topLevel.reset();
    m_surface.reset();
}

void WaylandTopLevel::Configure(int width, int height, const wl_array& states)
{
    m_nextSize = { std::max(0, width), std::max(0, height) };
    m_isActivated = HasState(states, XDG_TOPLEVEL_STATE_ACTIVATED);
}

void WaylandTopLevel::Apply(std::uint32_t serial)
{
    xdg_surface_ack_configure(m_surface.get(), serial);
    m_size = m_nextSize;
    m_isConfigured = true;
    TellActivity();
}

void WaylandTopLevel::SetFrame(std::uint32_t mode)
{
    m_hasFrame = mode == ZXDG_TOPLEVEL_DECORATION_V1_MODE_SERVER_SIDE;
}

void WaylandTopLevel::SetKeyboardFocus(bool hasIt)
{
    m_hasKeyboard = hasIt;
    TellActivity();
}

// A window that closes says nothing more: the player may be at its end, and hears that as another's turn.
void WaylandTopLevel::TellActivity()
{
    if (!m_topLevel)
        return;
    const bool isActive = m_isActivated || m_hasKeyboard;
    if (std::exchange(m_isActive, isActive) != isActive)
        user::SetDisplayActive(isActive);
}

void WaylandTopLevel::ShowMenu(wl_seat& seat, std::uint32_t serial, int x, int y) const
{
    if (!m_hasFrame)
        xdg_toplevel_show_window_menu(m_topLevel.get(), &seat, serial, x, y);
}

} // namespace cardsong::display
