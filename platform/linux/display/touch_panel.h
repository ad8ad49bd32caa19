// The device's panel: it feels one finger. Turns touches and the mouse, in pixels of the picture on the machine's
// screen, into taps on the device's.
#pragma once

#include "platform/host/viewport.h"

#include <cstdint>

namespace cardsong::display {

class TouchPanel {
public:
    // The first finger counts until it leaves. Places of fingers and of the mouse may lie anywhere.
    void FingerDown(std::int64_t finger, const host::Viewport& viewport, int x, int y);
    void FingerMove(std::int64_t finger, const host::Viewport& viewport, int x, int y);
    void FingerUp(std::int64_t finger, const host::Viewport& viewport, int x, int y);
    void FingerUp(std::int64_t finger); // where it was felt last
    void AllFingersUp();
    // The same for a mouse with its button. Nothing happens outside the device's screen until a press began in it.
    void Press(const host::Viewport& viewport, int x, int y);
    void Move(const host::Viewport& viewport, int x, int y);
    void Release(const host::Viewport& viewport, int x, int y);
    void Release(); // where it was last

private:
    bool m_isPressed = false;
    bool m_fingerIsDown = false;
    std::int64_t m_finger = 0;
    POINT m_last{}; // on the device's screen
};

} // namespace cardsong::display
