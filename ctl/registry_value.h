// A value of the registry, and how it stands on a command line and on a console.
#pragma once

#include "platform/ce.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct RegistryValue {
    DWORD type = 0;
    std::vector<BYTE> data;
};

// A word of the command line as a value: a number after "dword:", else a text, perhaps after "text:". Nothing for
// "dword:" before what is no number.
[[nodiscard]] std::optional<RegistryValue> RegistryValueFrom(std::string_view word);
// A number in decimal, a text as it is, all else as hexadecimal bytes.
[[nodiscard]] std::string Printed(const RegistryValue& value);
