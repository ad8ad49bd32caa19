// The C runtime's functions for 16-bit text, in the "C" locale: only the letters A to Z have a case.
#include "platform/linux/ce/kernel.h"

#include <cstdint>
#include <limits>

namespace {

constexpr char16_t AsciiLower(char16_t unit)
{
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 0x20) : unit;
}

constexpr bool IsBlank(char16_t unit)
{
    return unit == u' ' || (unit >= u'\t' && unit <= u'\r') || unit == u'\u00A0' || unit == u'\u3000';
}

} // namespace

std::size_t wcslen(const WCHAR* text)
{
    std::size_t units = 0;
    while (text[units] != 0)
        ++units;
    return units;
}

int wcscmp(const WCHAR* a, const WCHAR* b)
{
    while (*a != 0 && *a == *b) {
        ++a;
        ++b;
    }
    return *a == *b ? 0 : *a < *b ? -1 : 1;
}

int _wcsicmp(const WCHAR* a, const WCHAR* b)
{
    while (*a != 0 && AsciiLower(*a) == AsciiLower(*b)) {
        ++a;
        ++b;
    }
    return AsciiLower(*a) - AsciiLower(*b);
}

long _wtol(const WCHAR* text)
{
    constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
    constexpr std::int64_t kSmallest = std::numeric_limits<std::int32_t>::min();
    if (!text)
        return 0;
    while (IsBlank(*text))
        ++text;
    const bool isNegative = *text == u'-';
    if (*text == u'-' || *text == u'+')
        ++text;
    std::int64_t value = 0;
    for (; *text >= u'0' && *text <= u'9' && value <= kLargest; ++text)
        value = value * 10 + (*text - u'0');
    value = isNegative ? -value : value;
    return static_cast<long>(value > kLargest ? kLargest : value < kSmallest ? kSmallest : value);
}
