#include "platform/linux/kernel/host_names.h"

#include "platform/linux/kernel/unicode.h"

#include <algorithm>

namespace cardsong::kernel {
namespace {

constexpr char16_t kEscapedBytes = 0xDC00; // + 0x80 to 0xFF
constexpr char16_t kEscapedBackslash = 0xF05C;

constexpr bool IsSeparatorOrZero(char16_t unit)
{
    return unit == 0 || unit == u'/' || unit == u'\\';
}

// The same on both sides.
constexpr bool IsPlain(char16_t unit)
{
    return unit < 0x80 && !IsSeparatorOrZero(unit);
}

void AppendEscaped(std::u16string& name, std::string_view bytes)
{
    for (const char byte : bytes)
        name.push_back(static_cast<char16_t>(kEscapedBytes + static_cast<unsigned char>(byte)));
}

} // namespace

std::u16string DeviceNameFromHost(std::string_view hostName)
{
    std::u16string name;
    name.reserve(hostName.size());
    while (!hostName.empty()) {
        const auto character = DecodeUtf8(hostName);
        const auto bytes = hostName.substr(0, character.bytes);
        if (!character.isValid || character.value == kEscapedBackslash)
            AppendEscaped(name, bytes); // a true U+F05C is escaped too, so that it stays apart from the backslash
        else
            AppendUtf16(name, character.value == '\\' ? kEscapedBackslash : character.value);
        hostName.remove_prefix(character.bytes);
    }
    return name;
}

std::optional<std::string> HostNameFromDevice(std::u16string_view deviceName)
{
    const auto firstForeign = std::find_if_not(deviceName.begin(), deviceName.end(), IsPlain);
    std::string name(deviceName.begin(), firstForeign); // which is all of most names
    const auto plainUnits = static_cast<std::size_t>(firstForeign - deviceName.begin());
    for (std::size_t i = plainUnits, units = 0; i < deviceName.size(); i += units) {
        const auto character = DecodeUtf16(deviceName, i, units);
        const char16_t unit = deviceName[i];
        if (!character && (unit < kEscapedBytes + 0x80 || unit > kEscapedBytes + 0xFF))
            return std::nullopt;
        if (IsSeparatorOrZero(unit))
            return std::nullopt;
        if (!character)
            name.push_back(static_cast<char>(unit - kEscapedBytes));
        else
            AppendUtf8(name, *character == kEscapedBackslash ? U'\\' : *character);
    }
    return name;
}

} // namespace cardsong::kernel
