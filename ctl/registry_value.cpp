#include "ctl/registry_value.h"

#include "ctl/text_forms.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr std::string_view kNumberPrefix = "dword:";
constexpr std::string_view kTextPrefix = "text:";

} // namespace

std::optional<RegistryValue> RegistryValueFrom(std::string_view word)
{
    RegistryValue value;
    if (word.starts_with(kNumberPrefix)) {
        DWORD number = 0;
        if (!ReadNumber(word.substr(kNumberPrefix.size()), number))
            return std::nullopt;
        value = { REG_DWORD, std::vector<BYTE>(sizeof number) };
        std::memcpy(value.data.data(), &number, sizeof number);
        return value;
    }
    if (word.starts_with(kTextPrefix))
        word.remove_prefix(kTextPrefix.size());
    const WString text = Utf16(word);
    value = { REG_SZ, std::vector<BYTE>((text.size() + 1) * sizeof(WCHAR)) };
    std::memcpy(value.data.data(), text.c_str(), value.data.size());
    return value;
}

std::string Printed(const RegistryValue& value)
{
    DWORD number = 0;
    if (value.type == REG_DWORD && value.data.size() == sizeof number) {
        std::memcpy(&number, value.data.data(), sizeof number);
        return std::to_string(number);
    }
    if (value.type == REG_SZ) {
        WString text(value.data.size() / sizeof(WCHAR), 0);
        std::memcpy(text.data(), value.data.data(), text.size() * sizeof(WCHAR));
        return Utf8(WStringView(text).substr(0, text.find(WCHAR{ 0 })));
    }
    std::string bytes;
    for (const BYTE piece : value.data) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned>(piece));
        bytes += digits;
    }
    return bytes;
}
