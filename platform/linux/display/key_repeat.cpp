#include "platform/linux/display/key_repeat.h"

#include <algorithm>

namespace cardsong::display {

void KeyRepeat::SetRate(int perSecond, int delayMs)
{
    m_delayMs = static_cast<std::uint64_t>(std::max(0, delayMs));
    m_periodMs = perSecond > 0 ? static_cast<std::uint64_t>(std::max(1, 1000 / perSecond)) : 0;
    if (m_periodMs == 0)
        Stop();
}

void KeyRepeat::Press(std::uint32_t key, std::uint64_t nowMs)
{
    m_key = key;
    m_nextMs = m_periodMs != 0 ? std::optional(nowMs + m_delayMs) : std::nullopt;
}

void KeyRepeat::Release(std::uint32_t key)
{
    if (key == m_key)
        Stop();
}

std::optional<std::uint32_t> KeyRepeat::TakeDue(std::uint64_t nowMs)
{
    if (!m_nextMs || nowMs < *m_nextMs)
        return std::nullopt;
    *m_nextMs += m_periodMs;
    if (*m_nextMs <= nowMs)
        m_nextMs = nowMs + m_periodMs;
    return m_key;
}

} // namespace cardsong::display
