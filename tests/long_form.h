// What the environment asks of the tests that play by chance or for long.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>

namespace cardsong::test {

// Empty when it is not set.
inline std::string Setting(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

// ./test --long sets it.
inline bool IsLongForm()
{
    return !Setting("CARDSONG_LONG").empty();
}

// Another one in each run, unless it is asked for.
inline std::uint64_t FirstSeed()
{
    const std::string asked = Setting("CARDSONG_SEED");
    return asked.empty() ? std::random_device{}() : std::stoull(asked);
}

} // namespace cardsong::test
