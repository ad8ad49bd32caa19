// How many messages of others are taken: a program that floods the bus must not keep this one from its own work.
#pragma once

#include <algorithm>
#include <cstdint>

namespace cardsong::bus {

class MessageBudget {
public:
    static constexpr std::uint64_t kAtOnce = 25;
    static constexpr std::uint64_t kMsEach = 40; // 25 a second in the long run

    // Whether a message that comes at `nowMs`, which never falls, may be taken.
    bool Take(std::uint64_t nowMs)
    {
        m_emptyAtMs = std::max(m_emptyAtMs, nowMs);
        if (m_emptyAtMs - nowMs > (kAtOnce - 1) * kMsEach)
            return false;
        m_emptyAtMs += kMsEach;
        return true;
    }

private:
    std::uint64_t m_emptyAtMs = 0; // when what was taken is made up for
};

} // namespace cardsong::bus
