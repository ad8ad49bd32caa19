// Input written down as text: "Enter wait:500 Stop tap:160,120 shot:/tmp/a.png Exit". Presses nothing itself.
#pragma once

#include "platform/desktop_keys.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace cardsong::host {

struct KeyStep {
    UINT key;
    bool operator==(const KeyStep&) const = default;
};
struct CommandStep {
    WORD command;
    bool operator==(const CommandStep&) const = default;
};
struct WaitStep {
    std::uint32_t milliseconds;
    bool operator==(const WaitStep&) const = default;
};
struct TapStep {
    int x;
    int y;
    bool operator==(const TapStep&) const = default;
};
struct ShotStep {
    std::string path;
    bool operator==(const ShotStep&) const = default;
};
using ScriptStep = std::variant<KeyStep, CommandStep, WaitStep, TapStep, ShotStep>;

struct ScriptError {
    std::string message; // one line that names the bad word and says what is wrong with it
};

// Words are separated by blanks: names of keys, see device_keys.h, and of `commands`; wait:MS (at most an hour);
// tap:X,Y within the screen; shot:FILE.
std::variant<std::vector<ScriptStep>, ScriptError> ParseInputScript(std::string_view text,
                                                                    std::span<const CommandKey> commands);

} // namespace cardsong::host
