#include "platform/file_patterns.h"

#include <vector>

namespace cardsong::kernel {
namespace {

// The file system's own wildcards, which the API's pattern is turned into. No file name has these characters.
constexpr WCHAR kAny = TEXT('*');          // any units
constexpr WCHAR kAnyToLastDot = TEXT('<'); // any units, but none past the name's last dot
constexpr WCHAR kOneOrEnd = TEXT('>');     // one unit, or nothing before a dot and at the end
constexpr WCHAR kDotOrEnd = TEXT('"');     // a dot, or nothing at the end

// The set of pattern positions that a prefix of the name can have reached.
using Positions = std::vector<bool>;

WCHAR Lower(WCHAR unit)
{
    CharLowerBuffW(&unit, 1);
    return unit;
}

bool MayBeEmpty(WCHAR element, bool isAtEnd, bool isBeforeDot)
{
    switch (element) {
    case kAny:
    case kAnyToLastDot: return true;
    case kOneOrEnd: return isAtEnd || isBeforeDot;
    case kDotOrEnd: return isAtEnd;
    default: return false;
    }
}

void PassEmptyElements(Positions& positions, WStringView pattern, WStringView rest)
{
    const bool isAtEnd = rest.empty();
    const bool isBeforeDot = !isAtEnd && rest.front() == TEXT('.');
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (positions[i] && MayBeEmpty(pattern[i], isAtEnd, isBeforeDot))
            positions[i + 1] = true;
    }
}

bool Takes(WCHAR element, WCHAR unit, bool isLastDot)
{
    switch (element) {
    case kAny: return true;
    case kAnyToLastDot: return !isLastDot;
    case kOneOrEnd: return unit != TEXT('.');
    case kDotOrEnd: return unit == TEXT('.');
    default: return element == unit || Lower(element) == Lower(unit);
    }
}

} // namespace

bool HasWildcard(WStringView name)
{
    return name.find_first_of(TEXT("*?")) != WStringView::npos;
}

WString PreparePattern(WStringView pattern)
{
    while (!pattern.empty() && pattern.back() == TEXT(' '))
        pattern.remove_suffix(1);
    if (pattern == TEXT("*.*"))
        return TEXT("*");
    WString prepared(pattern);
    for (std::size_t i = 0; i < prepared.size(); ++i) {
        const WCHAR next = i + 1 < prepared.size() ? prepared[i + 1] : TEXT('\0');
        if (prepared[i] == TEXT('?'))
            prepared[i] = kOneOrEnd;
        else if (prepared[i] == TEXT('.') && (next == TEXT('?') || next == TEXT('*')))
            prepared[i] = kDotOrEnd;
        else if (prepared[i] == TEXT('*') && next == TEXT('.') && i + 2 == prepared.size())
            prepared[i] = kAnyToLastDot;
    }
    // "*." asks for a name without an extension: the star stops at the dot, and the dot may be missing.
    if (prepared.size() > 1 && prepared.back() == TEXT('.'))
        prepared.back() = kDotOrEnd;
    return prepared;
}

bool MatchesPattern(WStringView name, WStringView preparedPattern)
{
    const auto lastDot = name.rfind(TEXT('.'));
    Positions reached(preparedPattern.size() + 1);
    reached[0] = true;
    for (std::size_t n = 0; n < name.size(); ++n) {
        PassEmptyElements(reached, preparedPattern, name.substr(n));
        Positions next(preparedPattern.size() + 1);
        for (std::size_t i = 0; i < preparedPattern.size(); ++i) {
            const WCHAR element = preparedPattern[i];
            if (!reached[i] || !Takes(element, name[n], n == lastDot))
                continue;
            const bool stays = element == kAny || element == kAnyToLastDot;
            next[stays ? i : i + 1] = true;
        }
        reached = std::move(next);
    }
    PassEmptyElements(reached, preparedPattern, {});
    return reached.back();
}

} // namespace cardsong::kernel
