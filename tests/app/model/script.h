// Scripts: drawn by chance, played by the player and the model side by side, and made short when the two differ.
#pragma once

#include "tests/app/model/step.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace cardsong::test {

// Songs and settings, then `steps` steps, then an exit. The same seed gives the same script.
[[nodiscard]] Script DrawScript(std::uint64_t seed, int steps);

struct Disagreement {
    std::size_t step; // after which the two differed; the script's size: after exit
    std::string what;
};

// Plays the script by both, and compares after every step. Nothing when the two agree.
[[nodiscard]] std::optional<Disagreement> PlayScript(const Script& script);

// Plays a script, as PlayScript does.
using Fails = std::function<std::optional<Disagreement>(const Script& script)>;

// The shortest script found that still fails: chunks are left out, then single steps, then pairs.
[[nodiscard]] Script Shrink(Script script, const Fails& fails);

} // namespace cardsong::test
