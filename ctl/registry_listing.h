// "cardsongctl registry list": what lies in a key.
#pragma once

#include "platform/ce.h"

#include <optional>
#include <string>

// One line for each key below `key` and each of its values, both in alphabetical order; nothing when there is no such
// key. `key`: a path below HKEY_LOCAL_MACHINE; empty: that itself.
[[nodiscard]] std::optional<std::string> ListRegistryKey(const WString& key);
