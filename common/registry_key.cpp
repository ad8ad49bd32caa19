#include "common/registry_key.h"

UniqueKey OpenExistingKey(LPCWSTR path)
{
    HKEY key = nullptr;
    const LSTATUS result = RegOpenKeyExW(HKEY_LOCAL_MACHINE, path, 0, KEY_READ | KEY_WRITE, &key);
    return result == ERROR_SUCCESS ? UniqueKey(key) : UniqueKey();
}

UniqueKey OpenOrCreateKey(LPCWSTR path)
{
    UniqueKey key = OpenExistingKey(path);
    if (key)
        return key;
    HKEY made = nullptr;
    DWORD disposition = 0;
    if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, path, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_READ | KEY_WRITE, nullptr,
                        &made, &disposition) != ERROR_SUCCESS)
        return {};
    RegCloseKey(made);
    return OpenExistingKey(path);
}
