#include "platform/linux/kernel/file_patterns.h"

#include "platform/linux/kernel/unicode.h"

#include <vector>

namespace cardsong::kernel {
namespace {

// The file system's own wildcards, which the API's pattern is turned into. No file name has these characters.
constexpr char16_t kAny = u'*';          // any units
constexpr char16_t kAnyToLastDot = u'<'; // any units, but none past the name's last dot
constexpr char16_t kOneOrEnd = u'>';     // one unit, or nothing before a dot and at the end
constexpr char16_t kDotOrEnd = u'"';     // a dot, or nothing at the end

// The set of pattern positions that a prefix of the name can have reached.
using Positions = std::vector<bool>;

bool MayBeEmpty(char16_t element, bool isAtEnd, bool isBeforeDot)
{
    switch (element) {
    case kAny:
    case kAnyToLastDot: return true;
    case kOneOrEnd: return isAtEnd || isBeforeDot;
    case kDotOrEnd: return isAtEnd;
    default: return false;
    }
}

void PassEmptyElements(Positions& positions, std::u16string_view pattern, std::u16string_view rest)
{
    const bool isAtEnd = rest.empty();
    const bool isBeforeDot = !isAtEnd && rest.front() == u'.';
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (positions[i] && MayBeEmpty(pattern[i], isAtEnd, isBeforeDot))
            positions[i + 1] = true;
    }
}

bool Takes(char16_t element, char16_t unit, bool isLastDot)
{
    switch (element) {
    case kAny: return true;
    case kAnyToLastDot: return !isLastDot;
    case kOneOrEnd: return unit != u'.';
    case kDotOrEnd: return unit == u'.';
    default: return element == unit || ToLowerUnit(element) == ToLowerUnit(unit);
    }
}

} // namespace

bool HasWildcard(std::u16string_view name)
{
    return name.find_first_of(u"*?") != std::u16string_view::npos;
}

std::u16string PreparePattern(std::u16string_view pattern)
{
    while (!pattern.empty() && pattern.back() == u' ')
        pattern.remove_suffix(1);
    if (pattern == u"*.*")
        return u"*";
    std::u16string prepared(pattern);
    for (std::size_t i = 0; i < prepared.size(); ++i) {
        const char16_t next = i + 1 < prepared.size() ? prepared[i + 1] : u'\0';
        if (prepared[i] == u'?')
            prepared[i] = kOneOrEnd;
        else if (prepared[i] == u'.' && (next == u'?' || next == u'*'))
            prepared[i] = kDotOrEnd;
        else if (prepared[i] == u'*' && next == u'.' && i + 2 == prepared.size())
            prepared[i] = kAnyToLastDot;
    }
    // "*." asks for a name without an extension: the star stops at the dot, and the dot may be missing.
    if (prepared.size() > 1 && prepared.back() == u'.')
        prepared.back() = kDotOrEnd;
    return prepared;
}

bool MatchesPattern(std::u16string_view name, std::u16string_view preparedPattern)
{
    const auto lastDot = name.rfind(u'.');
    Positions reached(preparedPattern.size() + 1);
    reached[0] = true;
    for (std::size_t n = 0; n < name.size(); ++n) {
        PassEmptyElements(reached, preparedPattern, name.substr(n));
        Positions next(preparedPattern.size() + 1);
        for (std::size_t i = 0; i < preparedPattern.size(); ++i) {
            const char16_t element = preparedPattern[i];
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
