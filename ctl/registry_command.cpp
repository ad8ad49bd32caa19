#include "ctl/registry_command.h"

#include "ctl/device_option.h"
#include "ctl/text_forms.h"
#include "platform/ce.h"
#include "platform/device_visit.h"

#include <cstring>
#include <optional>
#include <vector>

namespace {

constexpr std::string_view kNumberPrefix = "dword:";
constexpr std::string_view kTextPrefix = "text:";
constexpr DWORD kMostBytes = 64 * 1024;

struct Value {
    DWORD type = 0;
    std::vector<BYTE> data;
};

// A word of the command line as a value: a number after "dword:", else a text, perhaps after "text:".
std::optional<Value> ValueFrom(std::string_view word)
{
    Value value;
    if (word.starts_with(kNumberPrefix)) {
        DWORD number = 0;
        if (!ReadNumber(word.substr(kNumberPrefix.size()), number))
            return std::nullopt;
        value = { REG_DWORD, std::vector<BYTE>(sizeof number) };
        std::memcpy(value.data.data(), &number, sizeof number);
        return value;
    }
    if (word.starts_with(kTextPrefix))
        word.remove_prefix(kTextPrefix.size());
    const WString text = Utf16(word);
    value = { REG_SZ, std::vector<BYTE>((text.size() + 1) * sizeof(WCHAR)) };
    std::memcpy(value.data.data(), text.c_str(), value.data.size());
    return value;
}

// A number in decimal, a text as it is, all else as hexadecimal bytes.
std::string Printed(const Value& value)
{
    DWORD number = 0;
    if (value.type == REG_DWORD && value.data.size() == sizeof number) {
        std::memcpy(&number, value.data.data(), sizeof number);
        return std::to_string(number);
    }
    if (value.type == REG_SZ) {
        WString text(value.data.size() / sizeof(WCHAR), 0);
        std::memcpy(text.data(), value.data.data(), text.size() * sizeof(WCHAR));
        return Utf8(WStringView(text).substr(0, text.find(WCHAR{ 0 })));
    }
    std::string bytes;
    for (const BYTE byte : value.data) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned>(byte));
        bytes += digits;
    }
    return bytes;
}

std::optional<Value> Query(const WString& key, const WString& name)
{
    HKEY handle = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, KEY_READ, &handle) != ERROR_SUCCESS)
        return std::nullopt;
    Value value{ 0, std::vector<BYTE>(kMostBytes) };
    DWORD sizeBytes = kMostBytes;
    const LSTATUS result = RegQueryValueExW(handle, name.c_str(), nullptr, &value.type, value.data.data(), &sizeBytes);
    RegCloseKey(handle);
    if (result != ERROR_SUCCESS)
        return std::nullopt;
    value.data.resize(sizeBytes);
    return value;
}

bool Store(const WString& key, const WString& name, const Value& value)
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
    std::fprintf(console.out, "%s\n", Printed(*value).c_str());
    return std::fflush(console.out) == 0 ? 0 : Complain(console, "cannot write", kFailed);
}

int Set(std::span<const std::string_view> words, const Console& console)
{
    const auto value = ValueFrom(words[2]);
    if (!value)
        return Complain(console, "registry: " + std::string(words[2]) + " is no number", kBadUsage);
    if (!Store(Utf16(words[0]), Utf16(words[1]), *value))
        return Complain(console, "the registry cannot be written", kFailed);
    return 0;
}

struct Verb {
    std::string_view name;
    std::size_t words; // that follow it
    int (*run)(std::span<const std::string_view> words, const Console& console);
};

constexpr Verb kVerbs[] = {
    { "get", 2, Get },
    { "set", 3, Set },
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
        if (words.size() != verb.words + 1)
            break;
        const cardsong::host::DeviceVisit visit(read.deviceDirectory.empty() ? cardsong::host::UsualDeviceDirectory()
                                                                             : read.deviceDirectory);
        return verb.run(words.subspan(1), console);
    }
    return Complain(console, "registry: takes get KEY NAME, or set KEY NAME VALUE", kBadUsage);
}

std::string Synopsis()
{
    return "registry get KEY NAME | set KEY NAME VALUE";
}

std::string OptionLines()
{
    return {};
}

constexpr std::string_view kDescription =
    "registry reads or writes a value of the device's registry. KEY is a path with\n"
    "backslashes below HKEY_LOCAL_MACHINE; VALUE is a text, or a number as dword:5 or dword:0x1f.\n"
    "A text that begins with dword: or text: is written with text: before it.\n";

} // namespace

const Command kRegistryCommand = { "registry", Synopsis, kDescription, OptionLines, Run };
