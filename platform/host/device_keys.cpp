#include "platform/host/device_keys.h"

namespace cardsong::host {
namespace {

constexpr DeviceKey kKeys[] = {
    { .code = VK_RETURN,
      .scriptName = "Enter",
      .machineKeys = { "Return", "Keypad Enter", "AudioPlay" },
      .isUsedUpByDialogs = true },
    { .code = VK_LEFT, .scriptName = "Left", .machineKeys = { "Left", "AudioPrev" }, .isUsedUpByDialogs = true },
    { .code = VK_RIGHT, .scriptName = "Right", .machineKeys = { "Right", "AudioNext" }, .isUsedUpByDialogs = true },
    { .code = VK_UP, .scriptName = "Up", .machineKeys = { "Up" }, .isUsedUpByDialogs = true },
    { .code = VK_DOWN, .scriptName = "Down", .machineKeys = { "Down" }, .isUsedUpByDialogs = true },
    { .code = VK_F24, .scriptName = "Exit", .machineKeys = { "F24", "Escape" }, .desktopCode = VK_ESCAPE },
    { .code = VK_TAB, .machineKeys = { "Tab" }, .isUsedUpByDialogs = true },
    { .code = VK_SPACE, .machineKeys = { "Space" } },
    { .code = VK_SHIFT, .machineKeys = { "Left Shift", "Right Shift" } },
};

} // namespace

std::span<const DeviceKey> DeviceKeys()
{
    return kKeys;
}

} // namespace cardsong::host
