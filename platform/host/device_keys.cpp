#include "platform/host/device_keys.h"

namespace cardsong::host {
namespace {

constexpr DeviceKey kKeys[] = {
    { .code = VK_RETURN,
      .scriptName = "Enter",
      .machineKeys = { "Return", "Keypad Enter", "Space", "AudioPlay" },
      .desktopCodes = { VK_SPACE, VK_MEDIA_PLAY_PAUSE },
      .isUsedUpByDialogs = true },
    { .code = VK_LEFT,
      .scriptName = "Left",
      .machineKeys = { "Left", "AudioPrev" },
      .desktopCodes = { VK_MEDIA_PREV_TRACK },
      .isUsedUpByDialogs = true },
    { .code = VK_RIGHT,
      .scriptName = "Right",
      .machineKeys = { "Right", "AudioNext" },
      .desktopCodes = { VK_MEDIA_NEXT_TRACK },
      .isUsedUpByDialogs = true },
    { .code = VK_UP, .scriptName = "Up", .machineKeys = { "Up" }, .isUsedUpByDialogs = true },
    { .code = VK_DOWN, .scriptName = "Down", .machineKeys = { "Down" }, .isUsedUpByDialogs = true },
    { .code = VK_F24,
      .scriptName = "Exit",
      .machineKeys = { "F24", "Escape", "Q" },
      .desktopCodes = { VK_ESCAPE, 'Q' } },
    { .code = VK_TAB, .machineKeys = { "Tab" }, .isUsedUpByDialogs = true },
    { .code = VK_SHIFT, .machineKeys = { "Left Shift", "Right Shift" } },
};

} // namespace

std::span<const DeviceKey> DeviceKeys()
{
    return kKeys;
}

} // namespace cardsong::host
