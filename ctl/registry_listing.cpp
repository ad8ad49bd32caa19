#include "ctl/registry_listing.h"

#include "ctl/registry_value.h"
#include "ctl/text_forms.h"

#include <map>
#include <set>

namespace {

constexpr DWORD kRoomUnits = 16 * 1024; // the longest name of a value, and its zero
constexpr DWORD kFirstRoomBytes = 64 * 1024;

// What has no room keeps nobody from seeing the rest.
bool GoesOn(LSTATUS status)
{
    return status == ERROR_SUCCESS || status == ERROR_MORE_DATA;
}

std::multiset<std::string> KeysIn(HKEY key)
{
    std::multiset<std::string> names;
    WString name(kRoomUnits, 0);
    for (DWORD index = 0;; ++index) {
        DWORD units = kRoomUnits;
        const LSTATUS status = RegEnumKeyExW(key, index, name.data(), &units, nullptr, nullptr, nullptr, nullptr);
        if (!GoesOn(status))
            return names;
        if (status == ERROR_SUCCESS)
            names.insert(Utf8(WStringView(name).substr(0, units)));
    }
}

std::multimap<std::string, RegistryValue> ValuesIn(HKEY key)
{
    std::multimap<std::string, RegistryValue> values;
    WString name(kRoomUnits, 0);
    DWORD roomBytes = kFirstRoomBytes;
    for (DWORD index = 0;; ++index) {
        RegistryValue value{ 0, std::vector<BYTE>(roomBytes) };
        DWORD units = kRoomUnits;
        DWORD sizeBytes = roomBytes;
        const LSTATUS status =
            RegEnumValueW(key, index, name.data(), &units, nullptr, &value.type, value.data.data(), &sizeBytes);
        if (!GoesOn(status))
            return values;
        if (status == ERROR_MORE_DATA && sizeBytes > roomBytes) {
            roomBytes = sizeBytes;
            --index; // once more
        } else if (status == ERROR_SUCCESS) {
            value.data.resize(sizeBytes);
            values.emplace(Utf8(WStringView(name).substr(0, units)), std::move(value));
        }
    }
}

} // namespace

std::optional<std::string> ListRegistryKey(const WString& key)
{
    HKEY handle = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, KEY_READ, &handle) != ERROR_SUCCESS)
        return std::nullopt;
    std::string lines;
    for (const std::string& name : KeysIn(handle))
        lines += WithEscapes(name) + "\\\n";
    for (const auto& [name, value] : ValuesIn(handle))
        lines += WithEscapes(name) + '\t' + WithEscapes(Printed(value)) + '\n';
    RegCloseKey(handle);
    return lines;
}
