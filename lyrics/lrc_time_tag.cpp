#include "lyrics/lrc_time_tag.h"

namespace {

constexpr int kMsPerMinute = 60'000;
constexpr int kMsPerSecond = 1000;
constexpr int kMsPerHundredth = 10;
constexpr std::size_t kMostDigits = 2;

// Takes a field off `rest`. Nothing when something else than a digit stands before `end`, before the end of the tag and
// before the second digit.
std::optional<std::int32_t> TakeField(WStringView& rest, WCHAR end)
{
    std::int32_t value = 0;
    std::size_t digits = 0;
    while (digits < kMostDigits && digits < rest.size() && rest[digits] != end) {
        const WCHAR digit = rest[digits++];
        if (digit < TEXT('0') || digit > TEXT('9'))
            return std::nullopt;
        value = value * 10 + (digit - TEXT('0'));
    }
    rest.remove_prefix(digits);
    return value;
}

} // namespace

std::optional<std::int32_t> ReadTimeTag(WStringView tag)
{
    const auto minutes = TakeField(tag, TEXT(':'));
    if (!minutes || tag.empty())
        return std::nullopt;
    tag.remove_prefix(1);
    const auto seconds = TakeField(tag, TEXT('.'));
    if (!seconds)
        return std::nullopt;
    const std::int32_t wholeMs = *minutes * kMsPerMinute + *seconds * kMsPerSecond;
    if (tag.empty())
        return wholeMs;
    tag.remove_prefix(1);
    const auto hundredths = TakeField(tag, TEXT(':'));
    if (!hundredths)
        return std::nullopt;
    return wholeMs + *hundredths * kMsPerHundredth;
}
