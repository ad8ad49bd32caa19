#include "platform/linux/display/touch_panel.h"

#include "platform/linux/user/input.h"

namespace cardsong::display {

void TouchPanel::Down(const Hand& hand, const host::Viewport& viewport, int x, int y)
{
    const auto point = host::ToScreenPoint(viewport, x, y);
    if (!point || m_hand)
        return;
    m_hand = hand;
    m_last = *point;
    user::PointerDown(m_last);
}

void TouchPanel::Move(const Hand& hand, const host::Viewport& viewport, int x, int y)
{
    if (m_hand != hand)
        return;
    m_last = host::ToNearestScreenPoint(viewport, x, y);
    user::PointerMove(m_last);
}

void TouchPanel::Up(const Hand& hand, const host::Viewport& viewport, int x, int y)
{
    if (m_hand == hand)
        m_last = host::ToNearestScreenPoint(viewport, x, y);
    Up(hand);
}

void TouchPanel::Up(const Hand& hand)
{
    if (m_hand != hand)
        return;
    m_hand.reset();
    user::PointerUp(m_last);
}

void TouchPanel::Cancel(const void* device)
{
    if (!m_hand || m_hand->device != device)
        return;
    m_hand.reset();
    user::CancelPointer();
}

} // namespace cardsong::display
