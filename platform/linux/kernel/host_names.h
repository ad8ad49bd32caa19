// File names between the host (any bytes) and the device (16-bit units), without loss. Knows no folder.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace cardsong::kernel {

// A byte that is not part of valid UTF-8 becomes the lone low surrogate U+DC00 + byte; a backslash, which separates
// folders on the device, becomes U+F05C.
std::u16string DeviceNameFromHost(std::string_view hostName);

// The way back. Nothing when the name holds another lone surrogate, a zero or a separator: no host file has such a
// name.
std::optional<std::string> HostNameFromDevice(std::u16string_view deviceName);

} // namespace cardsong::kernel
