#include "platform/windows/kernel/device_paths.h"

#include "platform/windows/kernel/utf8.h"

#include <span>

namespace cardsong::kernel {
namespace {

using Names = std::span<const WString>;

// Longer paths reach the system only in its extended form.
constexpr std::size_t kPlainPathUnits = 240;

bool IsSameName(const WString& name, const wchar_t* other)
{
    return CompareStringOrdinal(name.c_str(), -1, other, -1, TRUE) == CSTR_EQUAL;
}

bool Exists(const HostPath& path)
{
    return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

HostPath HostFolder(const std::string& utf8)
{
    HostPath path = Utf16FromUtf8(utf8);
    for (wchar_t& unit : path) {
        if (unit == L'/')
            unit = L'\\';
    }
    return path;
}

HostPath Below(HostPath path, Names names)
{
    for (const WString& name : names) {
        path += L'\\';
        path += name;
    }
    if (path.size() > kPlainPathUnits && !path.starts_with(L"\\\\"))
        path.insert(0, L"\\\\?\\");
    return path;
}

HostPath Installed(const DevicePath& path)
{
    const std::string& system = CurrentDeviceTree().systemDirectory;
    const bool isCovered = !system.empty() && !path.IsRoot() && IsSameName(path.names[0], L"Windows");
    return isCovered ? Below(HostFolder(system), path.names) : HostPath();
}

// In the user's tree or on the card; empty without a card.
HostPath OwnPlace(const DevicePath& path)
{
    const DeviceTree& tree = CurrentDeviceTree();
    if (path.IsRoot() || !IsSameName(path.names[0], L"SDMMC"))
        return Below(HostFolder(tree.userDirectory), path.names);
    if (tree.cardDirectory.empty())
        return {};
    return Below(HostFolder(tree.cardDirectory), Names(path.names).subspan(1));
}

// A colon would name a drive or a stream of a file, neither of which a device has.
bool HasForeignName(const DevicePath& path)
{
    for (const WString& name : path.names) {
        if (name.find(L':') != WString::npos)
            return true;
    }
    return false;
}

HostPlace Fail(DWORD error)
{
    return { error, {}, false };
}

HostPlace Locate(LPCWSTR devicePath, DevicePath& path)
{
    if (devicePath == nullptr || *devicePath == L'\0')
        return Fail(ERROR_PATH_NOT_FOUND);
    path = ParseDevicePath(devicePath);
    if (HasForeignName(path))
        return Fail(ERROR_INVALID_NAME);
    HostPlace place;
    place.path = OwnPlace(path);
    if (place.path.empty())
        return Fail(path.names.size() == 1 ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND);
    return place;
}

HostPlace Finish(HostPlace place, const DevicePath& path)
{
    if (place.error == ERROR_SUCCESS && path.endsInSeparator)
        place.path += L'\\';
    return place;
}

bool IsAlwaysThere(const DevicePath& folder)
{
    return folder.IsRoot() || (folder.names.size() == 1 && (IsSameName(folder.names[0], L"Windows") ||
                                                            IsSameName(folder.names[0], L"PocketStoreII")));
}

void MakeFolders(const HostPath& path)
{
    for (auto end = path.find(L'\\', 3); end != HostPath::npos; end = path.find(L'\\', end + 1))
        ::CreateDirectoryW(path.substr(0, end).c_str(), nullptr);
    ::CreateDirectoryW(path.c_str(), nullptr); // a failure shows when the file is made
}

} // namespace

HostPlace PlaceOf(LPCWSTR devicePath)
{
    DevicePath path;
    HostPlace place = Locate(devicePath, path);
    if (place.error == ERROR_SUCCESS && !Exists(place.path)) {
        HostPath installed = Installed(path);
        place.isInstalled = !installed.empty() && Exists(installed);
        if (place.isInstalled)
            place.path = std::move(installed);
    }
    return Finish(std::move(place), path);
}

HostPlace WritablePlaceOf(LPCWSTR devicePath)
{
    DevicePath path;
    HostPlace place = Locate(devicePath, path);
    if (place.error == ERROR_SUCCESS && !path.IsRoot()) {
        const DevicePath folder = path.Parent();
        const HostPath installed = Installed(folder);
        if (IsAlwaysThere(folder) || (!installed.empty() && Exists(installed)))
            MakeFolders(OwnPlace(folder));
    }
    return Finish(std::move(place), path);
}

std::optional<HostPath> FindHostPath(WStringView devicePath)
{
    HostPlace place = PlaceOf(WString(devicePath).c_str());
    if (place.error != ERROR_SUCCESS || !Exists(place.path))
        return std::nullopt;
    return std::move(place.path);
}

} // namespace cardsong::kernel
