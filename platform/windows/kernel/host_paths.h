// Puts together paths as this system takes them. Knows no device path.
#pragma once

#include "platform/device_tree.h"

#include <span>

namespace cardsong::kernel {

// A folder of the device tree's record, whole from its drive on; empty when the record is. A drive keeps the separator
// at its end, any other folder has none.
HostPath HostFolder(const std::string& utf8);

// The path that these names lead to below a folder. It has the system's extended form where the plain one would be cut,
// or would name something else: "NUL" a device, "a." the file "a".
HostPath Below(const HostPath& folder, std::span<const WString> names);

// A search pattern below a folder.
HostPath PatternBelow(const HostPath& folder, const WString& pattern);

// The folder in which a path lies.
HostPath FolderOf(const HostPath& path);

bool Exists(const HostPath& path);
bool IsFolder(const HostPath& path);

// Whether what exists at `path` lies below `folder` once all links are followed.
bool LiesBelow(const HostPath& path, const HostPath& folder);

// Makes a folder and those above it; a failure shows when a file is made there.
void MakeFolders(const HostPath& path);

} // namespace cardsong::kernel
