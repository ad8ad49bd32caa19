#include "platform/linux/display/wayland_touch.h"

#include "platform/linux/display/touch_panel.h"
#include "platform/linux/display/wayland_window.h"

#include <wayland-client.h>

namespace cardsong::display {

WaylandTouch::WaylandTouch(const WaylandInput& input, wl_seat& seat) : m_input(input), m_touch(wl_seat_get_touch(&seat))
{
    static constexpr wl_touch_listener kListener = {
        .down =
            [](void* data, wl_touch*, std::uint32_t serial, std::uint32_t, wl_surface*, std::int32_t finger,
               wl_fixed_t x, wl_fixed_t y) {
                static_cast<WaylandTouch*>(data)->Down(serial, finger, wl_fixed_to_double(x), wl_fixed_to_double(y));
            },
        .up = [](void* data, wl_touch*, std::uint32_t, std::uint32_t,
                 std::int32_t finger) { static_cast<WaylandTouch*>(data)->Up(finger); },
        .motion =
            [](void* data, wl_touch*, std::uint32_t, std::int32_t finger, wl_fixed_t x, wl_fixed_t y) {
                static_cast<WaylandTouch*>(data)->Move(finger, wl_fixed_to_double(x), wl_fixed_to_double(y));
            },
        .frame = kIgnoreEvent,
        // The compositor takes the touch for a gesture of its own, and tells of its fingers no more.
        .cancel = [](void* data, wl_touch*) { static_cast<WaylandTouch*>(data)->Cancel(); },
        .shape = kIgnoreEvent,
        .orientation = kIgnoreEvent,
    };
    wl_touch_add_listener(m_touch.get(), &kListener, this);
}

WaylandTouch::~WaylandTouch()
{
    Cancel();
}

void WaylandTouch::Down(std::uint32_t serial, std::int32_t finger, double x, double y)
{
    m_lastPress = serial;
    const POINT at = m_input.window.PixelAt(x, y);
    m_input.panel.Down({ this, finger }, m_input.window.Place(), static_cast<int>(at.x), static_cast<int>(at.y));
}

void WaylandTouch::Move(std::int32_t finger, double x, double y)
{
    const POINT at = m_input.window.PixelAt(x, y);
    m_input.panel.Move({ this, finger }, m_input.window.Place(), static_cast<int>(at.x), static_cast<int>(at.y));
}

void WaylandTouch::Up(std::int32_t finger)
{
    m_input.panel.Up({ this, finger });
}

void WaylandTouch::Cancel()
{
    m_input.panel.Cancel(this);
}

} // namespace cardsong::display
