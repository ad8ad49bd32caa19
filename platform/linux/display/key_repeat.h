// A key that is held down strikes again and again, where no server does that. Pure: told what time it is.
#pragma once

#include <cstdint>
#include <optional>

namespace cardsong::display {

class KeyRepeat {
public:
    // In force from the next key or strike on. `perSecond` 0 or less: no key repeats, and one that does stops.
    void SetRate(int perSecond, int delayMs);
    // The key pressed last repeats, until it goes up.
    void Press(std::uint32_t key, std::uint64_t nowMs);
    void Release(std::uint32_t key);
    void Stop() { m_nextMs.reset(); }
    // When the next strike is due; nothing while no key repeats.
    std::optional<std::uint64_t> NextMs() const { return m_nextMs; }
    // The key, if a strike is due. One that is a little late puts off no other; those that were missed nobody meant.
    std::optional<std::uint32_t> TakeDue(std::uint64_t nowMs);

private:
    std::uint64_t m_delayMs = 600; // as most desktops have it, for one that does not say
    std::uint64_t m_periodMs = 40; // 0: no key repeats
    std::uint32_t m_key = 0;
    std::optional<std::uint64_t> m_nextMs;
};

} // namespace cardsong::display
