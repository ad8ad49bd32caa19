#include "lyrics/text_similarity.h"

#include <algorithm>

namespace {

constexpr int kPairedLetters = 34; // codes of letters that count as the same, deliberately: "A" and "c"

constexpr bool IsLetter(WCHAR unit)
{
    return (unit >= TEXT('A') && unit <= TEXT('Z')) || (unit >= TEXT('a') && unit <= TEXT('z'));
}

constexpr bool IsPair(WCHAR a, WCHAR b)
{
    return IsLetter(b) && (a - b == kPairedLetters || b - a == kPairedLetters);
}

// No unit of an alignment counts less than nothing, so the best one begins at the start of its diagonal or just behind
// a unit that ends another: one walk tells the best of all.
std::int32_t BestOnDiagonal(WStringView name, WStringView text)
{
    const std::size_t units = std::min(name.size(), text.size());
    std::int32_t best = 0;
    std::int32_t score = 0;
    for (std::size_t i = 0; i < units; ++i) {
        const WCHAR unit = name[i];
        if (unit == text[i]) {
            score += unit != TEXT(' ') ? 1 : 0;
            best = std::max(best, score);
        } else if (!IsLetter(unit)) {
            score = 0;
        } else if (IsPair(unit, text[i])) {
            best = std::max(best, ++score);
        }
    }
    return best;
}

} // namespace

std::int32_t UnitsWithoutSpaces(WStringView text)
{
    return static_cast<std::int32_t>(text.size()) -
           static_cast<std::int32_t>(std::ranges::count(text, static_cast<WCHAR>(TEXT(' '))));
}

std::int32_t TextSimilarity(WStringView name, WStringView text, std::int32_t above)
{
    std::int32_t best = std::max(above, 0);
    const auto canBeBetter = [&best](std::size_t units) { return units > static_cast<std::size_t>(best); };
    for (std::size_t start = 0; start < name.size() && canBeBetter(name.size() - start); ++start) {
        if (canBeBetter(std::min(name.size() - start, text.size())))
            best = std::max(best, BestOnDiagonal(name.substr(start), text));
    }
    for (std::size_t start = 1; start < text.size() && canBeBetter(text.size() - start); ++start) {
        if (canBeBetter(std::min(text.size() - start, name.size())))
            best = std::max(best, BestOnDiagonal(name, text.substr(start)));
    }
    return best;
}
