#include "platform/windows/kernel/device_paths.h"

#include "platform/windows/kernel/host_paths.h"

#include <array>

namespace cardsong::kernel {
namespace {

using Names = std::span<const WString>;

bool IsSameName(const WString& name, const wchar_t* other)
{
    return CompareStringOrdinal(name.c_str(), -1, other, -1, TRUE) == CSTR_EQUAL;
}

bool StartsWith(const DevicePath& path, const wchar_t* folder)
{
    return !path.IsRoot() && IsSameName(path.names[0], folder);
}

// The path below a folder of the device tree's record; empty when there is no such folder.
HostPath BelowRecorded(const std::string& folder, Names names)
{
    const HostPath hostFolder = HostFolder(folder);
    return hostFolder.empty() ? HostPath() : Below(hostFolder, names);
}

// In the skin and in the installed tree, the one that wins first; empty ones are none.
std::array<HostPath, 2> InstalledPlaces(const DevicePath& path)
{
    if (!StartsWith(path, L"Windows"))
        return {};
    const DeviceTree& tree = CurrentDeviceTree();
    const Names names(path.names);
    return { BelowRecorded(tree.skinDirectory, names.subspan(1)), BelowRecorded(tree.systemDirectory, names) };
}

// In the user's tree or on the card.
HostPath OwnPlace(const DevicePath& path)
{
    const DeviceTree& tree = CurrentDeviceTree();
    const Names names(path.names);
    return StartsWith(path, L"SDMMC") ? BelowRecorded(tree.cardDirectory, names.subspan(1))
                                      : BelowRecorded(tree.userDirectory, names);
}

bool IsAlwaysThere(const DevicePath& folder)
{
    return folder.IsRoot() ||
           (folder.names.size() == 1 && (StartsWith(folder, L"Windows") || StartsWith(folder, L"PocketStoreII")));
}

HostPlace Fail(DWORD error)
{
    return { error, {}, false, false };
}

// Looks for the names as they are written.
HostPlace Find(const DevicePath& path)
{
    HostPlace place;
    place.path = OwnPlace(path);
    place.exists = !place.path.empty() && Exists(place.path);
    if (place.exists)
        return place;
    for (HostPath& installed : InstalledPlaces(path)) {
        if (installed.empty() || !Exists(installed))
            continue;
        place.path = std::move(installed);
        place.exists = true;
        place.isInstalled = true;
        break;
    }
    return place;
}

HostPlace FindTrimmedToo(const DevicePath& path)
{
    HostPlace place = Find(path);
    const DevicePath trimmed = path.Trimmed();
    return place.exists || trimmed.names == path.names ? place : Find(trimmed);
}

// The answer for a name that does not exist tells whether the folder above it does. In the user's tree the system
// tells.
HostPlace Missing(HostPlace place, const DevicePath& path)
{
    const DevicePath folder = path.Parent();
    if (path.IsRoot() || IsAlwaysThere(folder) || FindTrimmedToo(folder).isInstalled)
        return Fail(ERROR_FILE_NOT_FOUND);
    return place.path.empty() ? Fail(ERROR_PATH_NOT_FOUND) : place;
}

HostPlace FolderForNew(const DevicePath& folder)
{
    HostPlace place = FindTrimmedToo(folder);
    if (IsAlwaysThere(folder))
        place = { ERROR_SUCCESS, OwnPlace(folder), true, false };
    else if (!place.exists || !IsFolder(place.path))
        return Fail(ERROR_PATH_NOT_FOUND);
    else if (place.isInstalled)
        place.path = OwnPlace(Find(folder).exists ? folder : folder.Trimmed());
    else
        return place;
    if (place.path.empty())
        return Fail(ERROR_PATH_NOT_FOUND);
    MakeFolders(place.path);
    return place;
}

void KeepSeparator(HostPlace& place, const DevicePath& path)
{
    if (place.error == ERROR_SUCCESS && path.endsInSeparator && !place.path.ends_with(L'\\'))
        place.path += L'\\';
}

} // namespace

bool IsCard(const DevicePath& path)
{
    return path.names.size() == 1 && StartsWith(path, L"SDMMC");
}

HostPlace PlaceOf(const DevicePath& path)
{
    if (HasForeignName(path))
        return Fail(ERROR_INVALID_NAME);
    HostPlace place = FindTrimmedToo(path);
    if (!place.exists)
        place = Missing(std::move(place), path);
    KeepSeparator(place, path);
    return place;
}

HostPlace PlaceOf(LPCWSTR devicePath)
{
    if (devicePath == nullptr || *devicePath == L'\0')
        return Fail(ERROR_PATH_NOT_FOUND);
    return PlaceOf(ParseDevicePath(devicePath));
}

HostPlace PlaceForNew(LPCWSTR devicePath)
{
    if (devicePath == nullptr || *devicePath == L'\0')
        return Fail(ERROR_PATH_NOT_FOUND);
    const DevicePath path = ParseDevicePath(devicePath);
    if (path.IsRoot() || HasForeignName(path) || !IsFileName(path.names.back()))
        return Fail(ERROR_INVALID_NAME);
    if (IsCard(path))
        return Fail(ERROR_PATH_NOT_FOUND); // a card is put in, not made
    HostPlace place = FolderForNew(path.Parent());
    if (place.error != ERROR_SUCCESS)
        return place;
    if (LeadsOffTheCard(path, place.path))
        return Fail(ERROR_ACCESS_DENIED);
    const WString name = path.Trimmed().names.back();
    place = { ERROR_SUCCESS, Below(place.path, Names(&name, 1)), false, false };
    KeepSeparator(place, path);
    return place;
}

bool LeadsOffTheCard(const DevicePath& devicePath, const HostPath& path)
{
    return StartsWith(devicePath, L"SDMMC") && !LiesBelow(path, HostFolder(CurrentDeviceTree().cardDirectory));
}

std::vector<HostPath> HostFoldersOf(const DevicePath& path)
{
    std::vector<HostPath> folders;
    for (const DevicePath& spelling : { path, path.Trimmed() }) {
        auto [skin, installed] = InstalledPlaces(spelling);
        for (HostPath folder : { OwnPlace(spelling), std::move(skin), std::move(installed) }) {
            if (!folder.empty() && IsFolder(folder))
                folders.push_back(std::move(folder));
        }
        if (!folders.empty())
            break;
    }
    return folders;
}

std::optional<HostPath> FindHostPath(WStringView devicePath)
{
    const WString text(devicePath);
    HostPlace place = PlaceOf(text.c_str());
    if (place.error != ERROR_SUCCESS || !Exists(place.path))
        return std::nullopt;
    if (place.path.ends_with(L'\\') && !place.path.ends_with(L":\\"))
        place.path.pop_back();
    return std::move(place.path);
}

} // namespace cardsong::kernel
