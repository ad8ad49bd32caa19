#include "tests/app/model/script.h"

#include <algorithm>
#include <utility>

namespace cardsong::test {

namespace {

// Steps from `first` to before `end` are left out.
Script Without(const Script& script, std::size_t first, std::size_t end)
{
    Script rest(script.begin(), script.begin() + static_cast<std::ptrdiff_t>(first));
    rest.insert(rest.end(), script.begin() + static_cast<std::ptrdiff_t>(end), script.end());
    return rest;
}

// Delta debugging (Zeller, Hildebrandt: Simplifying and isolating failure-inducing input), of which the half without
// complements is enough here.
Script ShrinkByChunks(Script script, const Fails& fails)
{
    for (std::size_t chunk = std::max<std::size_t>(script.size() / 2, 1); chunk > 0;) {
        bool isShorter = false;
        for (std::size_t at = 0; at < script.size();) {
            Script shorter = Without(script, at, std::min(at + chunk, script.size()));
            if (fails(shorter)) {
                script = std::move(shorter);
                isShorter = true;
            } else {
                at += chunk;
            }
        }
        if (chunk > 1 || !isShorter)
            chunk /= 2;
    }
    return script;
}

// Two steps of which one undoes the other go together only.
Script ShrinkByPairs(Script script, const Fails& fails)
{
    for (std::size_t first = 0; first < script.size(); ++first)
        for (std::size_t second = first + 1; second < script.size();) {
            Script shorter = Without(Without(script, second, second + 1), first, first + 1);
            if (fails(shorter)) {
                script = std::move(shorter);
                second = first + 1;
            } else {
                ++second;
            }
        }
    return script;
}

} // namespace

Script Shrink(Script script, const Fails& fails)
{
    constexpr std::size_t kFewSteps = 40;
    if (const auto first = fails(script))
        script.resize(std::min(script.size(), first->step + 1));
    script = ShrinkByChunks(std::move(script), fails);
    return script.size() <= kFewSteps ? ShrinkByPairs(std::move(script), fails) : script;
}

} // namespace cardsong::test
