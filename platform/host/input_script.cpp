#include "platform/host/input_script.h"

#include "platform/host/device_keys.h"
#include "platform/screen_size.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace cardsong::host {
namespace {

constexpr std::uint32_t kLongestWaitMs = 3'600'000;

std::optional<std::uint32_t> ReadNumber(std::string_view text, std::uint32_t largest)
{
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number > largest)
        return std::nullopt;
    return number;
}

std::optional<ScriptStep> ReadTap(std::string_view place)
{
    const std::size_t comma = place.find(',');
    if (comma == std::string_view::npos)
        return std::nullopt;
    const auto x = ReadNumber(place.substr(0, comma), kScreenWidthPx - 1);
    const auto y = ReadNumber(place.substr(comma + 1), kScreenHeightPx - 1);
    if (!x || !y)
        return std::nullopt;
    return TapStep{ static_cast<int>(*x), static_cast<int>(*y) };
}

std::string KeyNames(std::span<const CommandKey> commands)
{
    std::string names;
    const auto add = [&names](std::string_view name) {
        if (!name.empty())
            names += (names.empty() ? "" : " ") + std::string(name);
    };
    for (const DeviceKey& key : DeviceKeys())
        add(key.scriptName);
    for (const CommandKey& key : commands)
        add(key.scriptName);
    return names;
}

std::optional<ScriptStep> ReadKey(std::string_view name, std::span<const CommandKey> commands)
{
    for (const DeviceKey& key : DeviceKeys()) {
        if (key.scriptName == name)
            return KeyStep{ key.code };
    }
    for (const CommandKey& key : commands) {
        if (key.scriptName == name)
            return CommandStep{ key.command };
    }
    return std::nullopt;
}

using Word = std::variant<ScriptStep, ScriptError>;

Word ReadWord(std::string_view word, std::span<const CommandKey> commands)
{
    const auto fail = [word](const std::string& why) { return ScriptError{ "\"" + std::string(word) + "\": " + why }; };
    if (word.starts_with("wait:")) {
        const auto milliseconds = ReadNumber(word.substr(5), kLongestWaitMs);
        return milliseconds ? Word(WaitStep{ *milliseconds }) : fail("wait: takes milliseconds, 0 to 3600000");
    }
    if (word.starts_with("tap:")) {
        const auto tap = ReadTap(word.substr(4));
        return tap ? Word(*tap) : fail("tap: takes X,Y with X 0 to 319 and Y 0 to 239");
    }
    if (word.starts_with("shot:"))
        return word.size() > 5 ? Word(ShotStep{ std::string(word.substr(5)) }) : fail("shot: takes a file name");
    if (const auto key = ReadKey(word, commands))
        return *key;
    return fail("neither a key (" + KeyNames(commands) + ") nor wait:MS, tap:X,Y or shot:FILE");
}

} // namespace

std::variant<std::vector<ScriptStep>, ScriptError> ParseInputScript(std::string_view text,
                                                                    std::span<const CommandKey> commands)
{
    constexpr std::string_view kBlanks = " \t\r\n";
    std::vector<ScriptStep> steps;
    for (std::size_t at = text.find_first_not_of(kBlanks); at != std::string_view::npos;) {
        const std::size_t end = std::min(text.find_first_of(kBlanks, at), text.size());
        Word word = ReadWord(text.substr(at, end - at), commands);
        if (auto* error = std::get_if<ScriptError>(&word))
            return std::move(*error);
        steps.push_back(std::get<ScriptStep>(std::move(word)));
        at = text.find_first_not_of(kBlanks, end);
    }
    return steps;
}

} // namespace cardsong::host
