// From a device path to a path of this machine. "\Windows" is the user's folder over the skin over the installed one,
// "\SDMMC" the card, all else lies in the user's tree; the machine's own Windows folder is never touched.
#pragma once

#include "platform/device_path.h"
#include "platform/device_tree.h"

#include <vector>

namespace cardsong::kernel {

struct HostPlace {
    DWORD error = ERROR_SUCCESS; // the path can name nothing here
    HostPath path;               // where it is, or where it would be: the system's own answer is the right one
    bool exists = false;
    bool isInstalled = false; // it exists, and only in the skin or the installed tree, which are never written
};

// Where `devicePath` is to be looked for. A path that ends in a separator stays one.
HostPlace PlaceOf(LPCWSTR devicePath);
HostPlace PlaceOf(const DevicePath& path);

// Where `devicePath` is to be made: in the user's tree or on the card. The folders that a device always has, and those
// that so far only the installed tree has, are made on the way.
HostPlace PlaceForNew(LPCWSTR devicePath);

// Whether the existing file or folder at `path` lies off the card although `devicePath`, under which it was found, is
// on it. Only a link leads there, and nothing is written there. In the user's own tree links may lead anywhere.
bool LeadsOffTheCard(const DevicePath& devicePath, const HostPath& path);

// The folders whose entries together are the listing of an existing folder, the one that wins first.
std::vector<HostPath> HostFoldersOf(const DevicePath& path);

// Whether the path is the card itself, a volume whose listing has no "." and "..", as that of the root has none.
bool IsCard(const DevicePath& path);

} // namespace cardsong::kernel
