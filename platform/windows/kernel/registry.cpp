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

// A device takes leading separators as if they were not there.
Key KeyOf(HKEY parent, LPCWSTR path)
{
    std::wstring_view rest = path != nullptr ? path : L"";
    rest.remove_prefix(std::min(rest.find_first_not_of(L'\\'), rest.size()));
    if (parent != HKEY_LOCAL_MACHINE)
        return { parent, std::wstring(rest) };
    std::wstring machine = kernel::MachineKeyOfDevice();
    if (!rest.empty())
        machine.append(L"\\").append(rest);
    return { HKEY_CURRENT_USER, std::move(machine) };
}

} // namespace

LSTATUS RegOpenKeyExW(HKEY parent, LPCWSTR path, DWORD options, REGSAM access, HKEY* key)
{
    const Key place = KeyOf(parent, path);
    return ::RegOpenKeyExW(place.parent, place.path.c_str(), options, access, key);
}

LSTATUS RegCreateKeyExW(HKEY parent, LPCWSTR path, DWORD reserved, LPWSTR className, DWORD options, REGSAM access,
                        SECURITY_ATTRIBUTES* security, HKEY* key, LPDWORD disposition)
{
    const Key place = KeyOf(parent, path);
    return ::RegCreateKeyExW(place.parent, place.path.c_str(), reserved, className, options, access, security, key,
                             disposition);
}

} // namespace cardsong::device
