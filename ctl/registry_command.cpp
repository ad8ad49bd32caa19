#include "ctl/registry_command.h"

#include "ctl/device_option.h"
#include "ctl/registry_listing.h"
#include "ctl/registry_value.h"
#include "ctl/text_forms.h"
#include "platform/ce.h"
#include "platform/device_visit.h"

#include <optional>
#include <vector>

namespace {

constexpr DWORD kMostBytes = 64 * 1024;

std::optional<RegistryValue> Query(const WString& key, const WString& name)
{
    HKEY handle = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, KEY_READ, &handle) != ERROR_SUCCESS)
        return std::nullopt;
    RegistryValue value{ 0, std::vector<BYTE>(kMostBytes) };
    DWORD sizeBytes = kMostBytes;
    const LSTATUS result = RegQueryValueExW(handle, name.c_str(), nullptr, &value.type, value.data.data(), &sizeBytes);
    RegCloseKey(handle);
    if (result != ERROR_SUCCESS)
        return std::nullopt;
    value.data.resize(sizeBytes);
    return value;
}

bool Store(const WString& key, const WString& name, const RegistryValue& value)
{
    HKEY handle = nullptr;
    if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr,
                        &handle, nullptr) != ERROR_SUCCESS)
        return false;
    const LSTATUS result =
        RegSetValueExW(handle, name.c_str(), 0, value.type, value.data.data(), static_cast<DWORD>(value.data.size()));
    RegCloseKey(handle);
    return result == ERROR_SUCCESS;
}

int Get(std::span<const std::string_view> words, const Console& console)
{
    const auto value = Query(Utf16(words[0]), Utf16(words[1]));
    if (!value)
        return Complain(console, "no such value", kFailed);
    return Print(console, Printed(*value) + '\n');
}

int List(std::span<const std::string_view> words, const Console& console)
{
    const auto lines = ListRegistryKey(words.empty() ? WString() : Utf16(words[0]));
    if (!lines)
        return Complain(console, "no such key", kFailed);
    return Print(console, *lines);
}

int Set(std::span<const std::string_view> words, const Console& console)
{
    const auto value = RegistryValueFrom(words[2]);
    if (!value)
        return Complain(console, "registry: " + std::string(words[2]) + " is no number", kBadUsage);
    if (!Store(Utf16(words[0]), Utf16(words[1]), *value))
        return Complain(console, "the registry cannot be written", kFailed);
    return 0;
}

struct Verb {
    std::string_view name;
    std::size_t fewestWords; // that follow it
    std::size_t mostWords;
    int (*run)(std::span<const std::string_view> words, const Console& console);
};

constexpr Verb kVerbs[] = {
    { "get", 2, 2, Get },
    { "list", 0, 1, List },
    { "set", 3, 3, Set },
};

int Run(std::span<const std::string_view> arguments, const Console& console)
{
    const DeviceArguments read = ReadDeviceOption(arguments);
    if (!read.isComplete)
        return Complain(console, "registry: --device needs a value", kBadUsage);
    const std::span<const std::string_view> words = read.words;
    for (const Verb& verb : kVerbs) {
        if (words.empty() || words[0] != verb.name)
            continue;
        if (words.size() <= verb.fewestWords || words.size() > verb.mostWords + 1)
            break;
        const cardsong::host::DeviceVisit visit(read.deviceDirectory.empty() ? cardsong::host::UsualDeviceDirectory()
                                                                             : read.deviceDirectory);
        return verb.run(words.subspan(1), console);
    }
    return Complain(console, "registry: takes get KEY NAME, list [KEY], or set KEY NAME VALUE", kBadUsage);
}

std::string Synopsis()
{
    return "registry get KEY NAME | list [KEY] | set KEY NAME VALUE";
}

std::string OptionLines()
{
    return {};
}

constexpr std::string_view kDescription =
    "registry reads or writes a value of the device's registry. KEY is a path with\n"
    "backslashes below HKEY_LOCAL_MACHINE; VALUE is a text, or a number as dword:5 or dword:0x1f.\n"
    "A text that begins with dword: or text: is written with text: before it. list prints what\n"
    "lies in a key: first the keys below it, a backslash behind each, then its values: name and\n"
    "value, parted by a tab, written like the songs.\n";

} // namespace

const Command kRegistryCommand = { "registry", Synopsis, kDescription, OptionLines, Run };
