// How names and values of the registry stand in its file. Knows no file.
#pragma once

#include "platform/linux/kernel/registry_file.h"

namespace cardsong::kernel {

// A key or value name as a group or entry name of a key file: what such names cannot hold is written "%" and four
// hexadecimal digits. The nameless value is "@".
std::string RegistryNameToText(std::u16string_view name);
std::u16string RegistryNameFromText(std::string_view text);

// "dword:00000007", "text:RGB(0,0,0)" for text that ends in its one zero, and "hex(TYPE):01,02" for everything else.
std::string RegistryValueToText(const RegistryValue& value);
// Nothing when the text has none of these forms: a value spoilt by hand counts as missing.
std::optional<RegistryValue> RegistryValueFromText(std::string_view text);

} // namespace cardsong::kernel
