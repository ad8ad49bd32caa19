// Finds a name in one host folder without regard to case. Knows no device path.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace cardsong::kernel {

// The host name of the entry of `hostFolder` that equals `deviceName` but for case; of several, the first by bytes.
// Nothing when there is none or the folder cannot be read. Folders are remembered between calls while they are
// unchanged.
std::optional<std::string> FindNameIgnoringCase(const std::string& hostFolder, std::u16string_view deviceName);

} // namespace cardsong::kernel
