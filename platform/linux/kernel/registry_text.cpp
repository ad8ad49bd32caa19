#include "platform/linux/kernel/registry_text.h"

#include "platform/linux/ce/kernel.h"
#include "platform/linux/kernel/unicode.h"

#include <charconv>

namespace cardsong::kernel {
namespace {

constexpr std::string_view kNumber = "dword:";
constexpr std::string_view kText = "text:";
constexpr std::string_view kBytes = "hex(";

std::string Hexadecimal(std::uint32_t value, std::size_t digits)
{
    std::string text(digits, '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, value >>= 4)
        *digit = "0123456789abcdef"[value & 0xF];
    return text;
}

// The whole of `text` as a hexadecimal number of at most `maxDigits` digits.
std::optional<std::uint32_t> ReadHexadecimal(std::string_view text, std::size_t maxDigits)
{
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    if (text.empty() || text.size() > maxDigits || error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

// The text that the bytes hold; nothing when they are not valid UTF-16 that ends in its first zero.
std::optional<std::u16string> PlainText(const std::vector<BYTE>& data)
{
    if (data.size() < 2 || data.size() % 2 != 0)
        return std::nullopt;
    std::u16string text;
    for (std::size_t i = 0; i < data.size(); i += 2)
        text.push_back(static_cast<char16_t>(data[i] | data[i + 1] << 8));
    if (text.find(u'\0') != text.size() - 1)
        return std::nullopt;
    text.pop_back();
    for (std::size_t i = 0, units = 0; i < text.size(); i += units) {
        if (!DecodeUtf16(text, i, units))
            return std::nullopt;
    }
    return text;
}

std::vector<BYTE> TextBytes(std::string_view utf8)
{
    std::u16string text;
    while (!utf8.empty()) {
        const auto character = DecodeUtf8(utf8);
        AppendUtf16(text, character.isValid ? character.value : U'\uFFFD');
        utf8.remove_prefix(character.bytes);
    }
    text.push_back(u'\0');
    std::vector<BYTE> data;
    for (const char16_t unit : text) {
        data.push_back(static_cast<BYTE>(unit & 0xFF));
        data.push_back(static_cast<BYTE>(unit >> 8));
    }
    return data;
}

std::optional<RegistryValue> BytesFromText(std::string_view text)
{
    const auto close = text.find("):");
    const auto type = close == std::string_view::npos ? std::nullopt : ReadHexadecimal(text.substr(0, close), 8);
    if (!type)
        return std::nullopt;
    RegistryValue value{ *type, {} };
    for (text.remove_prefix(close + 2); !text.empty();) {
        const auto comma = text.find(',');
        const auto byte = ReadHexadecimal(text.substr(0, comma), 2);
        if (!byte)
            return std::nullopt;
        value.data.push_back(static_cast<BYTE>(*byte));
        text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
    }
    return value;
}

bool NeedsEscape(std::u16string_view name, std::size_t position)
{
    const char16_t unit = name[position];
    const bool isEdge = position == 0 || position + 1 == name.size();
    return unit < 0x20 || unit == 0x7F || std::u16string_view(u"%[]=").find(unit) != std::u16string_view::npos ||
           (isEdge && unit == u' ') || (position == 0 && (unit == u'#' || unit == u'@'));
}

} // namespace

std::string RegistryNameToText(std::u16string_view name)
{
    std::string text = name.empty() ? "@" : "";
    for (std::size_t i = 0, units = 0; i < name.size(); i += units) {
        const auto character = DecodeUtf16(name, i, units);
        if (!character || NeedsEscape(name, i))
            text += '%' + Hexadecimal(name[i], 4);
        else
            AppendUtf8(text, *character);
    }
    return text;
}

std::u16string RegistryNameFromText(std::string_view text)
{
    std::u16string name;
    if (text == "@")
        return name;
    while (!text.empty()) {
        const auto escaped = text[0] == '%' && text.size() >= 5 ? ReadHexadecimal(text.substr(1, 4), 4) : std::nullopt;
        const auto character = DecodeUtf8(text);
        if (escaped)
            name.push_back(static_cast<char16_t>(*escaped));
        else
            AppendUtf16(name, character.isValid ? character.value : U'\uFFFD');
        text.remove_prefix(escaped ? 5 : character.bytes);
    }
    return name;
}

std::string RegistryValueToText(const RegistryValue& value)
{
    const auto& data = value.data;
    if (value.type == REG_DWORD && data.size() == 4) {
        const auto number = static_cast<std::uint32_t>(data[0]) | static_cast<std::uint32_t>(data[1]) << 8 |
                            static_cast<std::uint32_t>(data[2]) << 16 | static_cast<std::uint32_t>(data[3]) << 24;
        return std::string(kNumber) + Hexadecimal(number, 8);
    }
    if (const auto text = value.type == REG_SZ ? PlainText(data) : std::nullopt)
        return std::string(kText) + ToUtf8(*text);
    char type[16];
    const auto end = std::to_chars(type, type + sizeof type, value.type, 16).ptr;
    std::string text = std::string(kBytes) + std::string(type, end) + "):";
    for (std::size_t i = 0; i < data.size(); ++i)
        text += (i == 0 ? "" : ",") + Hexadecimal(data[i], 2);
    return text;
}

std::optional<RegistryValue> RegistryValueFromText(std::string_view text)
{
    if (text.starts_with(kText))
        return RegistryValue{ REG_SZ, TextBytes(text.substr(kText.size())) };
    if (text.starts_with(kBytes))
        return BytesFromText(text.substr(kBytes.size()));
    const auto number = text.starts_with(kNumber) ? ReadHexadecimal(text.substr(kNumber.size()), 8) : std::nullopt;
    if (!number)
        return std::nullopt;
    RegistryValue value{ REG_DWORD, {} };
    for (unsigned shift = 0; shift < 32; shift += 8)
        value.data.push_back(static_cast<BYTE>(*number >> shift & 0xFF));
    return value;
}

} // namespace cardsong::kernel
