// The device's panel: it feels one finger. Turns touches and the mouse, in pixels of the picture on the machine's
// screen, into taps on the device's.
#pragma once

#include "platform/host/viewport.h"

#include <cstdint>
#include <optional>

namespace cardsong::display {

// What may touch the panel: a finger of a touch screen, or a mouse while its button is down.
struct Hand {
    const void* device;      // stands for the mouse or the touch screen; never looked into
    std::int64_t finger = 0; // on that device
    bool operator==(const Hand&) const = default;
};

// The first hand that comes down in the picture has the panel until it leaves; nothing is felt of others meanwhile.
// Places may lie anywhere.
class TouchPanel {
public:
    void Down(const Hand& hand, const host::Viewport& viewport, int x, int y);
    void Move(const Hand& hand, const host::Viewport& viewport, int x, int y);
    void Up(const Hand& hand, const host::Viewport& viewport, int x, int y);
    void Up(const Hand& hand); // where it was felt last
    // The device tells no more of its hands: their touch was not meant for the panel.
    void Cancel(const void* device);

private:
    std::optional<Hand> m_hand; // which has the panel
    POINT m_last{};             // where it was felt last, on the device's screen
};

} // namespace cardsong::display
