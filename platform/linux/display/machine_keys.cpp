#include "platform/linux/display/machine_keys.h"

#include "platform/host/device_keys.h"
#include "platform/linux/user/input.h"

#include <algorithm>

namespace cardsong::display {

namespace {

// The unused names of a row are empty.
bool IsAmong(std::string_view name, std::span<const std::string_view> names)
{
    return !name.empty() && std::ranges::find(names, name) != names.end();
}

template <typename Key>
const Key* FindKey(std::string_view name, std::span<const Key> keys)
{
    const auto found = std::ranges::find_if(keys, [name](const Key& key) { return IsAmong(name, key.keys.names); });
    return found != keys.end() ? &*found : nullptr;
}

void StrikeDesktopKey(std::string_view name, bool isHeld, const DesktopKeys& keys)
{
    if (const CommandKey* const command = CommandKeyOf(name, keys)) {
        if (!isHeld || command->whenHeld == WhenKeyIsHeld::ActsAgain)
            user::GiveCommand(keys.mainWindowClass, command->command);
    } else if (const TapKey* const tap = TapKeyOf(name, keys)) {
        user::TapInFrontOf(keys.mainWindowClass, tap->place);
    } else if (const auto number = BottomButtonOf(name); number && !isHeld) {
        user::TapBottomButton(*number);
    }
}

} // namespace

std::optional<UINT> DeviceCodeOf(std::string_view name)
{
    for (const host::DeviceKey& known : host::DeviceKeys()) {
        if (IsAmong(name, known.machineKeys))
            return known.code;
    }
    return std::nullopt;
}

const CommandKey* CommandKeyOf(std::string_view name, const DesktopKeys& keys)
{
    return FindKey(name, keys.commands);
}

const TapKey* TapKeyOf(std::string_view name, const DesktopKeys& keys)
{
    return FindKey(name, keys.taps);
}

std::optional<int> BottomButtonOf(std::string_view name)
{
    const bool isOne = name.size() == 2 && name[0] == 'F' && name[1] >= '1' && name[1] <= '7';
    return isOne ? std::optional(name[1] - '0') : std::nullopt;
}

void StrikeMachineKey(std::string_view name, KeyStroke stroke, const DesktopKeys& keys)
{
    const auto key = DeviceCodeOf(name);
    if (!key && stroke != KeyStroke::Up)
        StrikeDesktopKey(name, stroke == KeyStroke::DownAgain, keys);
    else if (key && stroke == KeyStroke::Up)
        user::KeyUp(*key);
    else if (key)
        user::KeyDown(*key);
}

} // namespace cardsong::display
