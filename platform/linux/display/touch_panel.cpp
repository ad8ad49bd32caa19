#include "platform/linux/display/touch_panel.h"

#include "platform/linux/user/input.h"

#include <utility>

namespace cardsong::display {

void TouchPanel::FingerDown(std::int64_t finger, const host::Viewport& viewport, int x, int y)
{
    if (std::exchange(m_fingerIsDown, true))
        return;
    m_finger = finger;
    Press(viewport, x, y);
}

void TouchPanel::FingerMove(std::int64_t finger, const host::Viewport& viewport, int x, int y)
{
    if (m_fingerIsDown && finger == m_finger)
        Move(viewport, x, y);
}

void TouchPanel::FingerUp(std::int64_t finger, const host::Viewport& viewport, int x, int y)
{
    if (!m_fingerIsDown || finger != m_finger)
        return;
    m_fingerIsDown = false;
    Release(viewport, x, y);
}

void TouchPanel::FingerUp(std::int64_t finger)
{
    if (finger == m_finger)
        AllFingersUp();
}

void TouchPanel::AllFingersUp()
{
    if (std::exchange(m_fingerIsDown, false))
        Release();
}

void TouchPanel::Press(const host::Viewport& viewport, int x, int y)
{
    const auto point = host::ToScreenPoint(viewport, x, y);
    if (!point || m_isPressed)
        return;
    m_isPressed = true;
    m_last = *point;
    user::PointerDown(m_last);
}

void TouchPanel::Move(const host::Viewport& viewport, int x, int y)
{
    if (!m_isPressed)
        return;
    m_last = host::ToNearestScreenPoint(viewport, x, y);
    user::PointerMove(m_last);
}

void TouchPanel::Release(const host::Viewport& viewport, int x, int y)
{
    if (m_isPressed)
        m_last = host::ToNearestScreenPoint(viewport, x, y);
    Release();
}

void TouchPanel::Release()
{
    if (std::exchange(m_isPressed, false))
        user::PointerUp(m_last);
}

} // namespace cardsong::display
