// Random() of this test program, in place of the system's: its numbers follow from a seed, so that a script shuffles
// the same way every time, and the model knows the numbers too.
#pragma once

#include <cstdint>

namespace cardsong::test {

class NumberRow {
public:
    explicit NumberRow(std::uint64_t seed = 0) : m_state(seed) {}
    std::uint32_t Draw();

private:
    std::uint64_t m_state;
};

// The numbers of Random() begin anew.
void SowRandom(std::uint64_t seed);

} // namespace cardsong::test
