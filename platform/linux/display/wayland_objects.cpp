#include "platform/linux/display/wayland_objects.h"

#include <wayland-client.h>
#include <wayland-cursor.h>
#include <xdg-activation-v1-client-protocol.h>
#include <xdg-decoration-unstable-v1-client-protocol.h>
#include <xdg-shell-client-protocol.h>

namespace cardsong::display {

void EndWaylandObject::operator()(wl_buffer* object) const
{
    wl_buffer_destroy(object);
}
void EndWaylandObject::operator()(wl_callback* object) const
{
    wl_callback_destroy(object);
}
void EndWaylandObject::operator()(wl_compositor* object) const
{
    wl_compositor_destroy(object);
}
void EndWaylandObject::operator()(wl_cursor_theme* object) const
{
    wl_cursor_theme_destroy(object);
}
void EndWaylandObject::operator()(wl_display* object) const
{
    wl_display_disconnect(object);
}
void EndWaylandObject::operator()(wl_registry* object) const
{
    wl_registry_destroy(object);
}
void EndWaylandObject::operator()(wl_seat* object) const
{
    wl_seat_destroy(object);
}
void EndWaylandObject::operator()(wl_shm* object) const
{
    wl_shm_destroy(object);
}
void EndWaylandObject::operator()(wl_shm_pool* object) const
{
    wl_shm_pool_destroy(object);
}
void EndWaylandObject::operator()(wl_surface* object) const
{
    wl_surface_destroy(object);
}
void EndWaylandObject::operator()(xdg_activation_token_v1* object) const
{
    xdg_activation_token_v1_destroy(object);
}
void EndWaylandObject::operator()(xdg_activation_v1* object) const
{
    xdg_activation_v1_destroy(object);
}
void EndWaylandObject::operator()(xdg_surface* object) const
{
    xdg_surface_destroy(object);
}
void EndWaylandObject::operator()(xdg_toplevel* object) const
{
    xdg_toplevel_destroy(object);
}
void EndWaylandObject::operator()(xdg_wm_base* object) const
{
    xdg_wm_base_destroy(object);
}
void EndWaylandObject::operator()(zxdg_decoration_manager_v1* object) const
{
    zxdg_decoration_manager_v1_destroy(object);
}
void EndWaylandObject::operator()(zxdg_toplevel_decoration_v1* object) const
{
    zxdg_toplevel_decoration_v1_destroy(object);
}

// These have a request for their end since their third version only.

void EndWaylandObject::operator()(wl_keyboard* object) const
{
    if (wl_keyboard_get_version(object) >= WL_KEYBOARD_RELEASE_SINCE_VERSION)
        wl_keyboard_release(object);
    else
        wl_keyboard_destroy(object);
}
void EndWaylandObject::operator()(wl_output* object) const
{
    if (wl_output_get_version(object) >= WL_OUTPUT_RELEASE_SINCE_VERSION)
        wl_output_release(object);
    else
        wl_output_destroy(object);
}
void EndWaylandObject::operator()(wl_pointer* object) const
{
    if (wl_pointer_get_version(object) >= WL_POINTER_RELEASE_SINCE_VERSION)
        wl_pointer_release(object);
    else
        wl_pointer_destroy(object);
}
void EndWaylandObject::operator()(wl_touch* object) const
{
    if (wl_touch_get_version(object) >= WL_TOUCH_RELEASE_SINCE_VERSION)
        wl_touch_release(object);
    else
        wl_touch_destroy(object);
}

} // namespace cardsong::display
