#include "library/play_time_text.h"

#include <limits>

std::uint32_t WholeSeconds(double seconds)
{
    constexpr std::uint32_t kMost = std::numeric_limits<std::uint32_t>::max();
    if (!(seconds > 0))
        return 0;
    return seconds < static_cast<double>(kMost) ? static_cast<std::uint32_t>(seconds) : kMost;
}

const WCHAR* FormatPlayTime(std::uint32_t seconds)
{
    static WCHAR s_text[24];
    const std::uint32_t hours = seconds / 3600;
    const std::uint32_t minutes = seconds % 3600 / 60;
    const std::uint32_t rest = seconds % 60;
    if (seconds == 0)
        wsprintfW(s_text, TEXT("--:--"));
    else if (hours == 0)
        wsprintfW(s_text, TEXT("%d:%02d"), minutes, rest);
    else
        wsprintfW(s_text, TEXT("%d:%02d:%02d"), hours, minutes, rest);
    return s_text;
}
