// A program for tests: writes 1,000 numbers to ten values of one key of a device's registry, and looks each time at
// what stands in the value that it wrote last under the same name. Ends with the count of what was lost or refused, 100
// at most.
//   write_registry USER_FOLDER PREFIX
#include "platform/device_tree.h"
#include "platform/linux/ce/kernel.h"

#include <algorithm>
#include <string>

namespace {

constexpr DWORD kWrites = 1000;
constexpr DWORD kValues = 10;

bool Write(HKEY key, const WString& name, DWORD number)
{
    return RegSetValueExW(key, name.c_str(), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number) == 0;
}

DWORD Read(HKEY key, const WString& name)
{
    DWORD number = 0;
    DWORD sizeBytes = sizeof number;
    RegQueryValueExW(key, name.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(&number), &sizeBytes);
    return number;
}

} // namespace

int main(int count, char* arguments[])
{
    if (count != 3)
        return 101;
    cardsong::kernel::DeviceTree tree;
    tree.userDirectory = arguments[1];
    cardsong::kernel::InstallDeviceTree(tree);
    HKEY key = nullptr;
    if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, u"K", 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr) != 0)
        return 102;
    const std::string prefix = arguments[2];
    int losses = 0;
    for (DWORD i = 1; i <= kWrites; ++i) {
        const WString name = WString(prefix.begin(), prefix.end()) + static_cast<WCHAR>(u'0' + i % kValues);
        if (i > kValues && Read(key, name) != i - kValues)
            ++losses;
        if (!Write(key, name, i))
            ++losses;
    }
    RegCloseKey(key);
    return std::min(losses, 100);
}
