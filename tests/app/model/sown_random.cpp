#include "tests/app/model/sown_random.h"

#include "platform/ce.h"

namespace cardsong::test {

namespace {

NumberRow g_row;

} // namespace

// SplitMix64 (Steele, Lea, Flood: Fast splittable pseudorandom number generators), its upper half.
std::uint32_t NumberRow::Draw()
{
    m_state += 0x9E3779B97F4A7C15U;
    std::uint64_t mixed = m_state;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
    return static_cast<std::uint32_t>((mixed ^ (mixed >> 31)) >> 32);
}

void SowRandom(std::uint64_t seed)
{
    g_row = NumberRow(seed);
}

} // namespace cardsong::test

DWORD Random()
{
    return cardsong::test::g_row.Draw();
}
