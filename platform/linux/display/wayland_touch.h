// A touch screen: the first finger is the one on the device's panel.
#pragma once

#include "platform/linux/display/wayland_input.h"
#include "platform/linux/display/wayland_objects.h"

#include <cstdint>

namespace cardsong::display {

class WaylandTouch {
public:
    WaylandTouch(const WaylandInput& input, wl_seat& seat);
    // The touch of a finger that is down is taken back.
    ~WaylandTouch();
    WaylandTouch(const WaylandTouch&) = delete;
    WaylandTouch& operator=(const WaylandTouch&) = delete;
    // Of the last finger that came, for which a desktop may grant more; 0: there was none.
    std::uint32_t LastPress() const { return m_lastPress; }

private:
    void Down(std::uint32_t serial, std::int32_t finger, double x, double y);
    void Move(std::int32_t finger, double x, double y);
    void Up(std::int32_t finger);
    void Cancel();

    const WaylandInput m_input;
    WaylandPtr<wl_touch> m_touch;
    std::uint32_t m_lastPress = 0;
};

} // namespace cardsong::display
