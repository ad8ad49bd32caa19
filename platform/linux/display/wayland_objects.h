// Objects of a Wayland connection that end themselves: on our side and, where the protocol has a request for it, on the
// compositor's. The connection outlives all of them.
#pragma once

#include <memory>

struct wl_buffer;
struct wl_callback;
struct wl_compositor;
struct wl_cursor_theme;
struct wl_display;
struct wl_keyboard;
struct wl_output;
struct wl_pointer;
struct wl_registry;
struct wl_seat;
struct wl_shm;
struct wl_shm_pool;
struct wl_surface;
struct wl_touch;
struct xdg_activation_token_v1;
struct xdg_activation_v1;
struct xdg_surface;
struct xdg_toplevel;
struct xdg_wm_base;
struct zxdg_decoration_manager_v1;
struct zxdg_toplevel_decoration_v1;

namespace cardsong::display {

struct EndWaylandObject {
    void operator()(wl_buffer* object) const;
    void operator()(wl_callback* object) const;
    void operator()(wl_compositor* object) const;
    void operator()(wl_cursor_theme* object) const;
    void operator()(wl_display* object) const; // closes the connection
    void operator()(wl_keyboard* object) const;
    void operator()(wl_output* object) const;
    void operator()(wl_pointer* object) const;
    void operator()(wl_registry* object) const;
    void operator()(wl_seat* object) const;
    void operator()(wl_shm* object) const;
    void operator()(wl_shm_pool* object) const;
    void operator()(wl_surface* object) const;
    void operator()(wl_touch* object) const;
    void operator()(xdg_activation_token_v1* object) const;
    void operator()(xdg_activation_v1* object) const;
    void operator()(xdg_surface* object) const;
    void operator()(xdg_toplevel* object) const;
    void operator()(xdg_wm_base* object) const;
    void operator()(zxdg_decoration_manager_v1* object) const;
    void operator()(zxdg_toplevel_decoration_v1* object) const;
};

template <typename Object>
using WaylandPtr = std::unique_ptr<Object, EndWaylandObject>;

// Takes the place of a listener's function for an event that means nothing here. None may be missing: the library ends
// the process at an event without one, and a compositor may send any.
constexpr auto kIgnoreEvent = [](auto...) {};

} // namespace cardsong::display
