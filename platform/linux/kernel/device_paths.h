// From a device path to host files: layers, look-up without case, places for new files. Opens nothing and knows no
// handle.
#pragma once

#include "platform/device_path.h"

#include <cstddef>
#include <string>
#include <vector>

namespace cardsong::kernel {

// Whether the path is a volume of its own, whose listing has no "." and "..": the root, the card.
bool IsVolumeRoot(const DevicePath& path);

enum class HostKind { File, Folder, Neither };

struct LookUp {
    // ERROR_FILE_NOT_FOUND: the folder exists, the name does not; ERROR_PATH_NOT_FOUND; ERROR_INVALID_NAME: no file
    // has such a name.
    DWORD error = ERROR_SUCCESS;
    std::string hostPath;              // of what was found
    HostKind kind = HostKind::Neither; // of what a link there leads to
    bool isInstalled = false;          // found in the skin or the installed tree, which are never written
    std::size_t layerRootSize = 0;     // how much of `hostPath` is the host folder that its layer begins at

    bool Found() const { return error == ERROR_SUCCESS; }
};
// By the names as they are written, else by the names without the dots and blanks at their ends.
LookUp FindOnHost(const DevicePath& path);

// Where FindOnHost looks first: what exists there is what it finds. Empty when no host file has such a name.
std::string FirstPlaceOnHost(const DevicePath& path);

// The host path at which a file or folder named by `path` is made; the folder above it is made in the user's tree when
// so far only the installed tree has it. Empty, with `error` set, when the folder above does not exist.
std::string PlaceForNew(const DevicePath& path, DWORD& error);

// Whether the existing file or folder at `hostPath`, found under `path`, lies off the card, where only a link can lead:
// there nothing is written. The user's own tree may be put together with links.
bool LeadsOffTheCard(const DevicePath& path, const std::string& hostPath);

// The host folders whose entries together are the listing of an existing folder, the one that wins first.
std::vector<std::string> HostFoldersOf(const DevicePath& path);

// The folders that the root shows although they need not lie in the user's tree: "Windows", "SDMMC" with a card.
std::vector<std::u16string> MountedNames();

} // namespace cardsong::kernel
