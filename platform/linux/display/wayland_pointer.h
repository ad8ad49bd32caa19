// A mouse: its first button is the finger on the device's panel, the second opens the desktop's menu of the window.
#pragma once

#include "platform/linux/display/wayland_input.h"
#include "platform/linux/display/wayland_objects.h"

#include <cstdint>

namespace cardsong::display {

class WaylandPointer {
public:
    WaylandPointer(const WaylandInput& input, wl_seat& seat);
    // The press of a button that is down is taken back.
    ~WaylandPointer();
    WaylandPointer(const WaylandPointer&) = delete;
    WaylandPointer& operator=(const WaylandPointer&) = delete;
    // Of the last press, for which a desktop may grant more; 0: there was none.
    std::uint32_t LastPress() const { return m_lastPress; }

private:
    void Enter(std::uint32_t serial, double x, double y);
    void Leave();
    void Move(double x, double y);
    void Button(std::uint32_t serial, std::uint32_t button, bool isDown);

    const WaylandInput m_input;
    wl_seat& m_seat;
    WaylandPtr<wl_pointer> m_pointer;
    std::uint32_t m_entered = 0; // the serial
    std::uint32_t m_lastPress = 0;
    bool m_isHidden = false;
    double m_x = 0; // in the window's units
    double m_y = 0;
};

} // namespace cardsong::display
