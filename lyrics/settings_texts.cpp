#include "lyrics/settings_texts.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

namespace {

constexpr std::size_t kMostFieldUnits = 9;

constexpr bool IsDigit(WCHAR unit)
{
    return unit >= TEXT('0') && unit <= TEXT('9');
}

constexpr WCHAR UpperCase(WCHAR unit)
{
    return unit >= TEXT('a') && unit <= TEXT('z') ? static_cast<WCHAR>(unit - TEXT('a') + TEXT('A')) : unit;
}

// `word`: in capitals.
bool HoldsWord(WStringView text, WStringView word)
{
    const auto isSame = [](WCHAR unit, WCHAR capital) { return UpperCase(unit) == capital; };
    return std::search(text.begin(), text.end(), word.begin(), word.end(), isSame) != text.end();
}

// The number before the next comma; both are taken off `rest`.
std::optional<std::int32_t> TakeField(WStringView& rest)
{
    const std::size_t comma = rest.find(TEXT(','));
    if (comma == WStringView::npos || comma > kMostFieldUnits)
        return std::nullopt;
    const WString field(rest.substr(0, comma));
    rest.remove_prefix(comma + 1);
    return static_cast<std::int32_t>(_wtol(field.c_str()));
}

std::optional<std::int32_t> LastField(WStringView rest)
{
    WString digits;
    for (const WCHAR unit : rest) {
        if (IsDigit(unit))
            digits += unit;
        else if (unit != TEXT(' '))
            break;
        if (digits.size() == kMostFieldUnits)
            break;
    }
    if (digits.empty())
        return std::nullopt;
    return static_cast<std::int32_t>(_wtol(digits.c_str()));
}

// False when a number is missing.
bool ParseNumbers(WStringView text, WStringView word, std::span<std::int32_t> numbers)
{
    const auto firstDigit = std::ranges::find_if(text, IsDigit);
    if (!HoldsWord(text, word) || firstDigit == text.end())
        return false;
    text.remove_prefix(static_cast<std::size_t>(firstDigit - text.begin()));
    for (std::int32_t& number : numbers) {
        const bool isLast = &number == &numbers.back();
        const auto field = isLast ? LastField(text) : TakeField(text);
        if (!field)
            return false;
        number = *field;
    }
    return true;
}

} // namespace

WString ColorText(COLORREF color)
{
    WCHAR text[32] = {};
    wsprintfW(text, TEXT("RGB(%d,%d,%d)"), static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF),
              static_cast<int>(color >> 16 & 0xFF));
    return text;
}

WString RectText(const RECT& rect)
{
    WCHAR text[64] = {};
    wsprintfW(text, TEXT("RECT(%d,%d,%d,%d)"), static_cast<int>(rect.left), static_cast<int>(rect.top),
              static_cast<int>(rect.right), static_cast<int>(rect.bottom));
    return text;
}

COLORREF ParseColor(WStringView text)
{
    std::array<std::int32_t, 3> parts = {};
    if (!ParseNumbers(text, TEXT("RGB"), parts))
        return kNoColor;
    return RGB(parts[0], parts[1], parts[2]);
}

RECT ParseRect(WStringView text)
{
    std::array<std::int32_t, 4> edges = {};
    if (!ParseNumbers(text, TEXT("RECT"), edges))
        return {};
    return { edges[0], edges[1], edges[2], edges[3] };
}
