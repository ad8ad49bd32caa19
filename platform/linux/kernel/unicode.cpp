#include "platform/linux/kernel/unicode.h"

#include <algorithm>
#include <glib.h>

namespace cardsong::kernel {
namespace {

struct LeadByte {
    std::size_t length;
    char32_t bits;
    unsigned char lowestSecond;
    unsigned char highestSecond;
};

// The Unicode Standard, table 3-7: well-formed byte sequences, told by the range of the second byte.
std::optional<LeadByte> ClassifyLead(unsigned char lead)
{
    if (lead < 0xC2 || lead > 0xF4)
        return std::nullopt;
    if (lead < 0xE0)
        return LeadByte{ 2, lead & 0x1FU, 0x80, 0xBF };
    if (lead < 0xF0) {
        const unsigned char lowest = lead == 0xE0 ? 0xA0 : 0x80;
        const unsigned char highest = lead == 0xED ? 0x9F : 0xBF;
        return LeadByte{ 3, lead & 0x0FU, lowest, highest };
    }
    const unsigned char lowest = lead == 0xF0 ? 0x90 : 0x80;
    const unsigned char highest = lead == 0xF4 ? 0x8F : 0xBF;
    return LeadByte{ 4, lead & 0x07U, lowest, highest };
}

constexpr bool IsHighSurrogate(char16_t unit)
{
    return (unit & 0xFC00) == 0xD800;
}
constexpr bool IsLowSurrogate(char16_t unit)
{
    return (unit & 0xFC00) == 0xDC00;
}

} // namespace

Utf8Character DecodeUtf8(std::string_view text)
{
    const auto first = static_cast<unsigned char>(text.front());
    if (first < 0x80)
        return { first, 1, true };
    const auto lead = ClassifyLead(first);
    if (!lead)
        return { 0, 1, false };
    char32_t value = lead->bits;
    for (std::size_t i = 1; i < lead->length; ++i) {
        const unsigned char lowest = i == 1 ? lead->lowestSecond : 0x80;
        const unsigned char highest = i == 1 ? lead->highestSecond : 0xBF;
        if (i >= text.size())
            return { 0, i, false };
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte < lowest || byte > highest)
            return { 0, i, false };
        value = (value << 6) | (byte & 0x3FU);
    }
    return { value, lead->length, true };
}

void AppendUtf8(std::string& text, char32_t character)
{
    const auto append = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (character < 0x80) {
        append(character);
    } else if (character < 0x800) {
        append(0xC0 | (character >> 6));
        append(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        append(0xE0 | (character >> 12));
        append(0x80 | ((character >> 6) & 0x3F));
        append(0x80 | (character & 0x3F));
    } else {
        append(0xF0 | (character >> 18));
        append(0x80 | ((character >> 12) & 0x3F));
        append(0x80 | ((character >> 6) & 0x3F));
        append(0x80 | (character & 0x3F));
    }
}

void AppendUtf16(std::u16string& text, char32_t character)
{
    if (character < 0x10000) {
        text.push_back(static_cast<char16_t>(character));
        return;
    }
    text.push_back(static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10)));
    text.push_back(static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF)));
}

std::optional<char32_t> DecodeUtf16(std::u16string_view text, std::size_t position, std::size_t& units)
{
    const char16_t unit = text[position];
    units = 1;
    if (IsLowSurrogate(unit))
        return std::nullopt;
    if (!IsHighSurrogate(unit))
        return unit;
    if (position + 1 >= text.size() || !IsLowSurrogate(text[position + 1]))
        return std::nullopt;
    units = 2;
    return 0x10000 + ((static_cast<char32_t>(unit) - 0xD800) << 10) + (text[position + 1] - 0xDC00U);
}

std::string ToUtf8(std::u16string_view text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0, units = 0; i < text.size(); i += units)
        AppendUtf8(bytes, DecodeUtf16(text, i, units).value_or(0xFFFD));
    return bytes;
}

char16_t ToLowerUnit(char16_t unit)
{
    if (unit < 0x80)
        return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 0x20) : unit;
    const gunichar lower = g_unichar_tolower(unit);
    return lower >= 0x80 && lower < 0x10000 ? static_cast<char16_t>(lower) : unit;
}

std::u16string ToLower(std::u16string_view text)
{
    std::u16string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), ToLowerUnit);
    return lower;
}

bool EqualIgnoringCase(std::u16string_view a, std::u16string_view b)
{
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char16_t x, char16_t y) {
               return x == y || ToLowerUnit(x) == ToLowerUnit(y);
           });
}

} // namespace cardsong::kernel
