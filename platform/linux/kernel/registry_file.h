// The registry as one key file in the user's folder: groups are keys, entries are values. Knows no handle and no API
// error.
#pragma once

#include "platform/linux/ce/types.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cardsong::kernel {

struct RegistryValue {
    DWORD type = 0;
    std::vector<BYTE> data;
};

// Keys are paths from the root ("TAVO\Language"), without separators at either end; letters are compared without case.
bool RegistryKeyExists(std::u16string_view key);
std::optional<RegistryValue> ReadRegistryValue(std::u16string_view key, std::u16string_view name);
// What lies in a key, in the order of the file: the names of the keys one step below it, and those of its values, in
// their own spelling. Values that were spoilt by hand are among them; ReadRegistryValue has nothing for such a one.
std::vector<std::u16string> RegistrySubkeys(std::u16string_view key);
std::vector<std::u16string> RegistryValueNames(std::u16string_view key);

// Both change the file under its lock, from what stands in it at that moment, and replace it whole; what another
// program wrote is seen by the next call of any function here. False when the file cannot be written, or another
// program holds its lock for half a second; the file is then as it was.
bool CreateRegistryKey(std::u16string_view key);
bool WriteRegistryValue(std::u16string_view key, std::u16string_view name, const RegistryValue& value);

} // namespace cardsong::kernel
