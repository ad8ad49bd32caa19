// The registry functions of the API. Access rights are not told apart, as on the device.
#include "platform/linux/kernel/handles.h"
#include "platform/linux/kernel/registry_file.h"

#include <algorithm>
#include <cstring>

namespace cardsong::kernel {
namespace {

class KeyObject final : public KernelObject {
public:
    explicit KeyObject(std::u16string path) : m_path(std::move(path)) {}
    bool ClosesWithCloseHandle() const override { return false; }
    const std::u16string& Path() const { return m_path; }

private:
    const std::u16string m_path;
};

// The path behind an open key: empty for the root. Nothing for any other handle.
std::optional<std::u16string> PathOf(HKEY key)
{
    if (key == HKEY_LOCAL_MACHINE)
        return std::u16string();
    const auto object = std::dynamic_pointer_cast<KeyObject>(ObjectOf(key));
    return object ? std::optional(object->Path()) : std::nullopt;
}

// The path of a key below another. Separators at the start are ignored as on the device, those at the end as
// everywhere.
std::u16string Below(std::u16string path, std::u16string_view relative)
{
    while (!relative.empty()) {
        const auto end = std::min(relative.find(u'\\'), relative.size());
        if (end != 0) {
            if (!path.empty())
                path += u'\\';
            path += relative.substr(0, end);
        }
        relative.remove_prefix(std::min(end + 1, relative.size()));
    }
    return path;
}

LSTATUS Status(DWORD error)
{
    return static_cast<LSTATUS>(error);
}

LSTATUS OpenKey(std::u16string path, HKEY* key)
{
    const HANDLE handle = InsertHandle(std::make_shared<KeyObject>(std::move(path)));
    *key = static_cast<HKEY>(handle);
    return Status(handle ? ERROR_SUCCESS : ERROR_NOT_ENOUGH_MEMORY);
}

std::u16string_view NameOf(LPCWSTR name)
{
    return name ? std::u16string_view(name) : std::u16string_view();
}

// Text that the caller counted without its zero is stored with it, when the zero really follows.
DWORD StoredBytes(DWORD type, const BYTE* data, DWORD sizeBytes)
{
    if (type != REG_SZ || sizeBytes < sizeof(WCHAR) || sizeBytes % sizeof(WCHAR) != 0)
        return sizeBytes;
    WCHAR last = 0;
    std::memcpy(&last, data + sizeBytes - sizeof last, sizeof last);
    if (last == 0)
        return sizeBytes;
    WCHAR next = 0;
    std::memcpy(&next, data + sizeBytes, sizeof next);
    return next == 0 ? sizeBytes + static_cast<DWORD>(sizeof next) : sizeBytes;
}

bool EndsInZero(const std::vector<BYTE>& text)
{
    return text.size() >= 2 && text[text.size() - 1] == 0 && text[text.size() - 2] == 0;
}

// Copies a value out. Text that was stored without a zero gets one where the buffer has room; the size does not count
// it.
LSTATUS Deliver(const RegistryValue& value, LPBYTE data, LPDWORD sizeBytes)
{
    const auto neededBytes = static_cast<DWORD>(value.data.size());
    if (!sizeBytes)
        return Status(ERROR_SUCCESS);
    const DWORD roomBytes = *sizeBytes;
    *sizeBytes = neededBytes;
    if (!data)
        return Status(ERROR_SUCCESS);
    if (roomBytes < neededBytes)
        return Status(ERROR_MORE_DATA);
    std::copy(value.data.begin(), value.data.end(), data);
    if (value.type == REG_SZ && !EndsInZero(value.data) && roomBytes - neededBytes >= sizeof(WCHAR))
        std::memset(data + neededBytes, 0, sizeof(WCHAR));
    return Status(ERROR_SUCCESS);
}

// Copies a name out with its zero; the size is told without it.
LSTATUS DeliverName(std::u16string_view name, LPWSTR target, LPDWORD units)
{
    if (*units <= name.size())
        return Status(ERROR_MORE_DATA);
    *std::copy(name.begin(), name.end(), target) = 0;
    *units = static_cast<DWORD>(name.size());
    return Status(ERROR_SUCCESS);
}

// The values of a key, without those that were spoilt by hand.
std::vector<std::pair<std::u16string, RegistryValue>> ValuesOf(const std::u16string& path)
{
    std::vector<std::pair<std::u16string, RegistryValue>> values;
    for (auto& name : RegistryValueNames(path)) {
        if (auto value = ReadRegistryValue(path, name))
            values.emplace_back(std::move(name), *std::move(value));
    }
    return values;
}

} // namespace
} // namespace cardsong::kernel

using namespace cardsong::kernel;

LSTATUS RegOpenKeyExW(HKEY parent, LPCWSTR path, DWORD, REGSAM, HKEY* key)
{
    if (!key)
        return Status(ERROR_INVALID_PARAMETER);
    *key = nullptr;
    const auto above = PathOf(parent);
    if (!above)
        return Status(ERROR_INVALID_HANDLE);
    auto whole = Below(*above, NameOf(path));
    if (!RegistryKeyExists(whole))
        return Status(ERROR_FILE_NOT_FOUND);
    return OpenKey(std::move(whole), key);
}

LSTATUS RegCreateKeyExW(HKEY parent, LPCWSTR path, DWORD reserved, LPWSTR, DWORD, REGSAM, SECURITY_ATTRIBUTES*,
                        HKEY* key, LPDWORD disposition)
{
    if (!key || reserved != 0)
        return Status(ERROR_INVALID_PARAMETER);
    const auto above = PathOf(parent);
    if (!above)
        return Status(ERROR_INVALID_HANDLE);
    auto whole = Below(*above, NameOf(path));
    const bool existed = RegistryKeyExists(whole);
    if (!existed && !CreateRegistryKey(whole))
        return Status(ERROR_ACCESS_DENIED);
    if (disposition)
        *disposition = existed ? REG_OPENED_EXISTING_KEY : REG_CREATED_NEW_KEY;
    return OpenKey(std::move(whole), key);
}

LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD sizeBytes)
{
    if (reserved || (data && !sizeBytes))
        return Status(ERROR_INVALID_PARAMETER);
    const auto path = PathOf(key);
    if (!path)
        return Status(ERROR_INVALID_HANDLE);
    const auto value = ReadRegistryValue(*path, NameOf(name));
    if (!value) {
        if (type)
            *type = 0;
        if (sizeBytes && !data)
            *sizeBytes = 0;
        return Status(ERROR_FILE_NOT_FOUND);
    }
    if (type)
        *type = value->type;
    return Deliver(*value, data, sizeBytes);
}

LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD sizeBytes)
{
    if (reserved != 0 || (!data && sizeBytes != 0))
        return Status(ERROR_INVALID_PARAMETER);
    const auto path = PathOf(key);
    if (!path)
        return Status(ERROR_INVALID_HANDLE);
    RegistryValue value{ type, {} };
    if (data)
        value.data.assign(data, data + StoredBytes(type, data, sizeBytes));
    const auto before = ReadRegistryValue(*path, NameOf(name));
    if (before && before->type == value.type && before->data == value.data)
        return Status(ERROR_SUCCESS); // flash memory is spared
    return Status(WriteRegistryValue(*path, NameOf(name), value) ? ERROR_SUCCESS : ERROR_ACCESS_DENIED);
}

LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameUnits, LPDWORD reserved, LPWSTR, LPDWORD,
                      FILETIME*)
{
    if (!name || !nameUnits || reserved)
        return Status(ERROR_INVALID_PARAMETER);
    const auto path = PathOf(key);
    if (!path)
        return Status(ERROR_INVALID_HANDLE);
    const auto names = RegistrySubkeys(*path);
    return index < names.size() ? DeliverName(names[index], name, nameUnits) : Status(ERROR_NO_MORE_ITEMS);
}

LSTATUS RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameUnits, LPDWORD reserved, LPDWORD type,
                      LPBYTE data, LPDWORD sizeBytes)
{
    if (!name || !nameUnits || reserved || (data && !sizeBytes))
        return Status(ERROR_INVALID_PARAMETER);
    const auto path = PathOf(key);
    if (!path)
        return Status(ERROR_INVALID_HANDLE);
    const auto values = ValuesOf(*path);
    if (index >= values.size())
        return Status(ERROR_NO_MORE_ITEMS);
    const auto& [itsName, value] = values[index];
    if (const LSTATUS status = DeliverName(itsName, name, nameUnits); status != Status(ERROR_SUCCESS))
        return status;
    if (type)
        *type = value.type;
    return Deliver(value, data, sizeBytes);
}

LSTATUS RegCloseKey(HKEY key)
{
    if (key == HKEY_LOCAL_MACHINE)
        return Status(ERROR_SUCCESS);
    return Status(CloseAs<KeyObject>(key) ? ERROR_SUCCESS : ERROR_INVALID_HANDLE);
}
