#include "ctl/device_option.h"

DeviceArguments ReadDeviceOption(std::span<const std::string_view> arguments)
{
    constexpr std::string_view kOption = "--device";
    constexpr std::string_view kOptionWithValue = "--device=";
    DeviceArguments read;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i].starts_with(kOptionWithValue))
            read.deviceDirectory = arguments[i].substr(kOptionWithValue.size());
        else if (arguments[i] != kOption)
            read.words.push_back(arguments[i]);
        else if (i + 1 < arguments.size())
            read.deviceDirectory = arguments[++i];
        else
            read.isComplete = false;
    }
    return read;
}
