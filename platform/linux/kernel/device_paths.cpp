#include "platform/linux/kernel/device_paths.h"

#include "platform/device_tree.h"
#include "platform/linux/kernel/folder_names.h"
#include "platform/linux/kernel/host_names.h"
#include "platform/linux/kernel/unicode.h"

#include <algorithm>
#include <filesystem>
#include <span>
#include <sys/stat.h>

namespace cardsong::kernel {
namespace {

constexpr std::u16string_view kWindows = u"Windows";
constexpr std::u16string_view kCard = u"SDMMC";
constexpr std::u16string_view kFlashVolume = u"PocketStoreII";

using Names = std::span<const std::u16string>;

struct Layer {
    std::string hostRoot;
    bool isInstalled = false;
};

// The host folders that can hold a path, the one that wins first, and the names of the path below them.
struct Layers {
    std::vector<Layer> layers;
    Names names;
};

// Of what exists.
std::optional<HostKind> KindOf(const std::string& hostPath)
{
    struct stat facts = {};
    if (stat(hostPath.c_str(), &facts) != 0)
        return std::nullopt;
    return S_ISREG(facts.st_mode) ? HostKind::File : S_ISDIR(facts.st_mode) ? HostKind::Folder : HostKind::Neither;
}

Layers LayersOf(const DevicePath& path)
{
    const auto& tree = CurrentDeviceTree();
    const Names names(path.names);
    Layers layers;
    if (!names.empty() && EqualIgnoringCase(names[0], kCard)) {
        if (!tree.cardDirectory.empty())
            layers.layers.push_back({ tree.cardDirectory });
        layers.names = names.subspan(1);
    } else if (!names.empty() && EqualIgnoringCase(names[0], kWindows)) {
        if (!tree.userDirectory.empty())
            layers.layers.push_back({ tree.userDirectory + "/Windows" });
        if (!tree.skinDirectory.empty())
            layers.layers.push_back({ tree.skinDirectory, true });
        if (!tree.systemDirectory.empty())
            layers.layers.push_back({ tree.systemDirectory + "/Windows", true });
        layers.names = names.subspan(1);
    } else {
        if (!tree.userDirectory.empty())
            layers.layers.push_back({ tree.userDirectory });
        layers.names = names;
    }
    return layers;
}

// The host path with the names as they are written; empty when one of them can be no host name.
std::string ExactPath(const std::string& hostRoot, Names names)
{
    std::size_t units = hostRoot.size();
    for (const auto& name : names)
        units += 1 + name.size();
    std::string path;
    path.reserve(units); // and for names of ASCII no more is needed
    path = hostRoot;
    for (const auto& name : names) {
        const auto hostName = HostNameFromDevice(name);
        if (!hostName)
            return {};
        path += '/';
        path += *hostName;
    }
    return path;
}

// Looks in one layer: exactly first, then name by name without case. The folder above is looked for in the same way, so
// that a wrong last name costs one search of one folder.
LookUp FindInLayer(const Layer& layer, Names names)
{
    LookUp result;
    result.isInstalled = layer.isInstalled;
    result.layerRootSize = layer.hostRoot.size();
    const auto take = [&result](std::string hostPath) {
        const auto kind = KindOf(hostPath);
        result.kind = kind.value_or(HostKind::Neither);
        result.hostPath = std::move(hostPath);
        return kind.has_value();
    };
    if (take(ExactPath(layer.hostRoot, names)))
        return result;
    if (names.empty()) {
        result.error = ERROR_FILE_NOT_FOUND;
        return result;
    }
    const auto folder = FindInLayer(layer, names.first(names.size() - 1));
    if (!folder.Found() || folder.kind != HostKind::Folder) {
        result.error = ERROR_PATH_NOT_FOUND;
        return result;
    }
    const auto hostName = FindNameIgnoringCase(folder.hostPath, names.back());
    if (!hostName || !take(folder.hostPath + '/' + *hostName))
        result.error = ERROR_FILE_NOT_FOUND;
    return result;
}

bool IsMadeAsNeeded(const DevicePath& folder)
{
    return folder.IsRoot() || (folder.names.size() == 1 && (EqualIgnoringCase(folder.names[0], kWindows) ||
                                                            EqualIgnoringCase(folder.names[0], kFlashVolume)));
}

void MakeHostFolders(const std::string& hostPath)
{
    for (auto end = hostPath.find('/', 1); end != std::string::npos; end = hostPath.find('/', end + 1))
        mkdir(hostPath.substr(0, end).c_str(), 0777);
    mkdir(hostPath.c_str(), 0777); // a failure shows when the file is made
}

// The user's counterpart of a folder that only the skin or the installed tree has, with that folder's own spelling.
std::string UserCounterpart(const LookUp& installed)
{
    return CurrentDeviceTree().userDirectory + "/Windows" + installed.hostPath.substr(installed.layerRootSize);
}

std::string WritableFolder(const DevicePath& folder, DWORD& error)
{
    if (IsMadeAsNeeded(folder)) {
        const auto& user = CurrentDeviceTree().userDirectory;
        if (folder.IsRoot()) {
            MakeHostFolders(user);
            return user;
        }
        if (!EqualIgnoringCase(folder.names[0], kWindows)) {
            const auto existing = FindOnHost(folder); // perhaps in another spelling
            if (existing.Found())
                return existing.hostPath;
        }
        auto place = user + (EqualIgnoringCase(folder.names[0], kWindows) ? "/Windows" : "/PocketStoreII");
        MakeHostFolders(place);
        return place;
    }
    const auto found = FindOnHost(folder);
    if (!found.Found() || found.kind != HostKind::Folder) {
        error = found.error == ERROR_INVALID_NAME ? ERROR_INVALID_NAME : ERROR_PATH_NOT_FOUND;
        return {};
    }
    if (!found.isInstalled)
        return found.hostPath;
    auto place = UserCounterpart(found);
    MakeHostFolders(place);
    return place;
}

// With the names as they are written.
LookUp FindExactly(const DevicePath& path)
{
    const auto layers = LayersOf(path);
    LookUp result;
    result.error = ERROR_PATH_NOT_FOUND;
    for (const auto& layer : layers.layers) {
        auto found = FindInLayer(layer, layers.names);
        if (found.Found())
            return found;
        if (found.error == ERROR_FILE_NOT_FOUND)
            result.error = ERROR_FILE_NOT_FOUND;
    }
    return result;
}

std::vector<std::string> HostFoldersExactly(const DevicePath& path)
{
    const auto layers = LayersOf(path);
    std::vector<std::string> folders;
    for (const auto& layer : layers.layers) {
        const auto found = FindInLayer(layer, layers.names);
        if (found.Found() && found.kind == HostKind::Folder)
            folders.push_back(found.hostPath);
    }
    return folders;
}

bool IsCard(const DevicePath& path)
{
    return path.names.size() == 1 && EqualIgnoringCase(path.names[0], kCard);
}

} // namespace

bool IsVolumeRoot(const DevicePath& path)
{
    return path.IsRoot() || IsCard(path);
}

LookUp FindOnHost(const DevicePath& path)
{
    auto result = FindExactly(path);
    const auto trimmed = path.Trimmed();
    if (!result.Found() && trimmed.names != path.names)
        result = FindExactly(trimmed);
    if (result.Found())
        return result;
    if (HasForeignName(path))
        result.error = ERROR_INVALID_NAME;
    else if (path.IsRoot() || IsMadeAsNeeded(path.Parent()))
        result.error = ERROR_FILE_NOT_FOUND; // the folder above counts as there even while nothing has made it
    return result;
}

std::string FirstPlaceOnHost(const DevicePath& path)
{
    const auto layers = LayersOf(path);
    return layers.layers.empty() ? std::string() : ExactPath(layers.layers.front().hostRoot, layers.names);
}

std::string PlaceForNew(const DevicePath& path, DWORD& error)
{
    const auto name = path.IsRoot() ? std::u16string() : path.Trimmed().names.back();
    const auto hostName = HostNameFromDevice(name);
    if (!IsFileName(name) || !hostName) {
        error = ERROR_INVALID_NAME;
        return {};
    }
    if (IsCard(path) || CurrentDeviceTree().userDirectory.empty()) { // a card is put in, not made
        error = ERROR_PATH_NOT_FOUND;
        return {};
    }
    auto folder = WritableFolder(path.Parent(), error);
    if (folder.empty())
        return {};
    if (LeadsOffTheCard(path, folder)) {
        error = ERROR_ACCESS_DENIED;
        return {};
    }
    return folder + '/' + *hostName;
}

bool LeadsOffTheCard(const DevicePath& path, const std::string& hostPath)
{
    if (path.IsRoot() || !EqualIgnoringCase(path.names[0], kCard))
        return false;
    std::error_code error;
    const auto card = std::filesystem::canonical(CurrentDeviceTree().cardDirectory, error);
    const auto place = error ? std::filesystem::path() : std::filesystem::canonical(hostPath, error);
    const auto differs = std::mismatch(card.begin(), card.end(), place.begin(), place.end()).first;
    return error || differs != card.end();
}

std::vector<std::string> HostFoldersOf(const DevicePath& path)
{
    auto folders = HostFoldersExactly(path);
    return folders.empty() ? HostFoldersExactly(path.Trimmed()) : folders;
}

std::vector<std::u16string> MountedNames()
{
    std::vector<std::u16string> names;
    for (const auto name : { kWindows, kCard }) {
        if (!HostFoldersOf(ParseDevicePath(name)).empty())
            names.emplace_back(name);
    }
    return names;
}

} // namespace cardsong::kernel
