// What the API tells of a host file or folder: attributes, times, size. Knows no device path.
#pragma once

#include "platform/linux/ce/kernel.h"

#include <cstdint>
#include <optional>
#include <string>

namespace cardsong::kernel {

struct HostFacts {
    DWORD attributes = 0; // FILE_ATTRIBUTE_...
    FILETIME created = {};
    FILETIME accessed = {};
    FILETIME written = {};
    std::uint64_t sizeBytes = 0; // 0 for a folder
    std::uint64_t device = 0;    // with `inode`: which file it is, whatever its name
    std::uint64_t inode = 0;

    bool IsFolder() const { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
};

// Follows symbolic links. Nothing for what is neither a file nor a folder (pipes, sockets, devices) or is not there.
std::optional<HostFacts> ReadHostFacts(const std::string& hostPath);

// The attributes that the host's mode bits cannot hold lie in the extended attribute "user.DOSATTRIB", in the form that
// file servers for Windows use: "0x20" in hexadecimal, perhaps followed by a zero and more.
void StoreAttributes(int descriptor, DWORD attributes);
// A file that is written becomes due for archiving again.
void MarkForArchiving(int descriptor);

// The API's error for an errno.
DWORD ErrorFromHost(int hostError);

} // namespace cardsong::kernel
