// Messages between programs as D-Bus signals (D-Bus 0.41, freedesktop.org): see docs/device-bus.md. What comes from the
// bus may be anything.
#pragma once

#include "platform/linux/user/other_programs.h"

#include <gio/gio.h>

#include <optional>
#include <string>
#include <string_view>

namespace cardsong::bus {

inline constexpr const char* kObjectPath = "/org/cardsong/Device";
inline constexpr const char* kInterface = "org.cardsong.Device1";
inline constexpr const char* kMessageSignal = "Message"; // a registered message
inline constexpr const char* kCommandSignal = "Command"; // WM_COMMAND for one window

[[nodiscard]] const char* SignalFor(const user::CrossingMessage& message);
// Its arguments, as a floating reference. `device`: which device the program belongs to, valid UTF-8.
[[nodiscard]] GVariant* ArgumentsFor(const user::CrossingMessage& message, const std::string& device);

// Nothing for another signal, arguments of other types, another device, a name or class that is no text of 1 to 255
// units (a message for all has no class), and a number that does not fit into this machine's words. `arguments`:
// borrowed.
[[nodiscard]] std::optional<user::CrossingMessage> MessageFrom(std::string_view signal, GVariant* arguments,
                                                               const std::string& device);

} // namespace cardsong::bus
