#include "platform/windows/kernel/registry.h"

#include "platform/device_tree.h"
#include "platform/windows/kernel/device_calls.h"
#include "platform/windows/kernel/utf8.h"

#include <algorithm>

namespace cardsong::kernel {
namespace {

constexpr std::size_t kLongestKeyName = 255;

} // namespace

std::wstring MachineKeyOfDevice()
{
    std::wstring device = Utf16FromUtf8(CurrentDeviceTree().userDirectory);
    std::replace(device.begin(), device.end(), L'\\', L'/');
    if (device.size() > kLongestKeyName)
        device.erase(0, device.size() - kLongestKeyName); // the end tells devices apart
    return L"Software\\Cardsong\\Devices\\" + device;
}

} // namespace cardsong::kernel

namespace cardsong::device {
namespace {

struct Key {
    HKEY parent;
    std::wstring path;
};

// Separators at the start, at the end and side by side count as if they were not there.
std::wstring Tidy(std::wstring_view path)
{
    std::wstring tidy;
    while (!path.empty()) {
        const auto end = std::min(path.find(L'\\'), path.size());
        if (end != 0)
            tidy.append(tidy.empty() ? L"" : L"\\").append(path.substr(0, end));
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return tidy;
}

Key KeyOf(HKEY parent, LPCWSTR path)
{
    std::wstring below = Tidy(path != nullptr ? path : L"");
    if (parent != HKEY_LOCAL_MACHINE)
        return { parent, std::move(below) };
    return { HKEY_CURRENT_USER, kernel::MachineKeyOfDevice().append(below.empty() ? L"" : L"\\").append(below) };
}

// Calls `function` with the key. In the place of the machine's key it gets the device's own, which always exists.
template <typename Function>
LSTATUS WithKey(HKEY key, Function function)
{
    if (key != HKEY_LOCAL_MACHINE)
        return function(key);
    HKEY root = nullptr;
    const LSTATUS status = device::RegOpenKeyExW(key, nullptr, 0, KEY_READ | KEY_WRITE, &root);
    if (status != ERROR_SUCCESS)
        return status;
    const LSTATUS result = function(root);
    RegCloseKey(root);
    return result;
}

} // namespace

LSTATUS RegOpenKeyExW(HKEY parent, LPCWSTR path, DWORD options, REGSAM access, HKEY* key)
{
    const Key place = KeyOf(parent, path);
    if (parent == HKEY_LOCAL_MACHINE && KeyOf(nullptr, path).path.empty())
        return ::RegCreateKeyExW(place.parent, place.path.c_str(), 0, nullptr, 0, access, nullptr, key, nullptr);
    return ::RegOpenKeyExW(place.parent, place.path.c_str(), options, access, key);
}

LSTATUS RegCreateKeyExW(HKEY parent, LPCWSTR path, DWORD reserved, LPWSTR className, DWORD options, REGSAM access,
                        SECURITY_ATTRIBUTES* security, HKEY* key, LPDWORD disposition)
{
    const Key place = KeyOf(parent, path);
    return ::RegCreateKeyExW(place.parent, place.path.c_str(), reserved, className, options, access, security, key,
                             disposition);
}

LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD sizeBytes)
{
    return WithKey(key, [&](HKEY own) { return ::RegQueryValueExW(own, name, reserved, type, data, sizeBytes); });
}

LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD sizeBytes)
{
    return WithKey(key, [&](HKEY own) { return ::RegSetValueExW(own, name, reserved, type, data, sizeBytes); });
}

LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameUnits, LPDWORD reserved, LPWSTR className,
                      LPDWORD classUnits, FILETIME* lastWrite)
{
    return WithKey(key, [&](HKEY own) {
        return ::RegEnumKeyExW(own, index, name, nameUnits, reserved, className, classUnits, lastWrite);
    });
}

LSTATUS RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameUnits, LPDWORD reserved, LPDWORD type,
                      LPBYTE data, LPDWORD sizeBytes)
{
    return WithKey(
        key, [&](HKEY own) { return ::RegEnumValueW(own, index, name, nameUnits, reserved, type, data, sizeBytes); });
}

} // namespace cardsong::device
