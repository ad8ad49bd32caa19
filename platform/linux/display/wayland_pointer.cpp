#include "platform/linux/display/wayland_pointer.h"

#include "platform/linux/display/touch_panel.h"
#include "platform/linux/display/wayland_cursor.h"
#include "platform/linux/display/wayland_window.h"

#include <linux/input-event-codes.h>
#include <utility>
#include <wayland-client.h>

namespace cardsong::display {

WaylandPointer::WaylandPointer(const WaylandInput& input, wl_seat& seat)
    : m_input(input), m_seat(seat), m_pointer(wl_seat_get_pointer(&seat))
{
    static constexpr wl_pointer_listener kListener = {
        .enter =
            [](void* data, wl_pointer*, std::uint32_t serial, wl_surface*, wl_fixed_t x, wl_fixed_t y) {
                static_cast<WaylandPointer*>(data)->Enter(serial, wl_fixed_to_double(x), wl_fixed_to_double(y));
            },
        .leave = [](void* data, wl_pointer*, std::uint32_t,
                    wl_surface*) { static_cast<WaylandPointer*>(data)->Leave(); },
        .motion =
            [](void* data, wl_pointer*, std::uint32_t, wl_fixed_t x, wl_fixed_t y) {
                static_cast<WaylandPointer*>(data)->Move(wl_fixed_to_double(x), wl_fixed_to_double(y));
            },
        .button =
            [](void* data, wl_pointer*, std::uint32_t serial, std::uint32_t, std::uint32_t button,
               std::uint32_t state) {
                static_cast<WaylandPointer*>(data)->Button(serial, button, state == WL_POINTER_BUTTON_STATE_PRESSED);
            },
        .axis = kIgnoreEvent,
        .frame = kIgnoreEvent,
        .axis_source = kIgnoreEvent,
        .axis_stop = kIgnoreEvent,
        .axis_discrete = kIgnoreEvent,
        .axis_value120 = kIgnoreEvent,
    };
    wl_pointer_add_listener(m_pointer.get(), &kListener, this);
}

WaylandPointer::~WaylandPointer()
{
    Leave();
}

// On the full screen there is no arrow until the mouse moves: most of them are touched.
void WaylandPointer::Enter(std::uint32_t serial, double x, double y)
{
    m_entered = serial;
    m_x = x;
    m_y = y;
    m_isHidden = m_input.options.fullScreen;
    if (m_isHidden)
        WaylandCursor::Hide(*m_pointer, serial);
    else
        m_input.cursor.Show(*m_pointer, serial, m_input.window.Scale());
}

// The compositor has taken the mouse for something else, and will not tell of its button.
void WaylandPointer::Leave()
{
    m_input.panel.Cancel(this);
}

void WaylandPointer::Move(double x, double y)
{
    m_x = x;
    m_y = y;
    if (std::exchange(m_isHidden, false))
        m_input.cursor.Show(*m_pointer, m_entered, m_input.window.Scale());
    const POINT at = m_input.window.PixelAt(x, y);
    m_input.panel.Move({ this }, m_input.window.Place(), static_cast<int>(at.x), static_cast<int>(at.y));
}

void WaylandPointer::Button(std::uint32_t serial, std::uint32_t button, bool isDown)
{
    const POINT at = m_input.window.PixelAt(m_x, m_y);
    if (isDown)
        m_lastPress = serial;
    if (button == BTN_RIGHT && isDown)
        m_input.window.TopLevel().ShowMenu(m_seat, serial, static_cast<int>(m_x), static_cast<int>(m_y));
    else if (button == BTN_LEFT && isDown)
        m_input.panel.Down({ this }, m_input.window.Place(), static_cast<int>(at.x), static_cast<int>(at.y));
    else if (button == BTN_LEFT)
        m_input.panel.Up({ this }, m_input.window.Place(), static_cast<int>(at.x), static_cast<int>(at.y));
}

} // namespace cardsong::display
