// The option that says which device is meant, as the commands that speak to a player take it.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

struct DeviceArguments {
    std::string deviceDirectory;         // empty: the usual one
    std::vector<std::string_view> words; // everything else, in order
    bool isComplete = true;              // false: the option stands at the end without its value
};

// Takes "--device DIR" and "--device=DIR" out of the arguments, wherever they stand; the last one counts.
[[nodiscard]] DeviceArguments ReadDeviceOption(std::span<const std::string_view> arguments);
