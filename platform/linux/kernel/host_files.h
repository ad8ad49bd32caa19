// What the API tells of a host file or folder: attributes, times, size. Knows no device path.
#pragma once

#include "platform/linux/ce/kernel.h"

#include <cstdint>
#include <optional>
#include <string>

namespace cardsong::kernel {

// Which file it is, whatever its name.
struct HostIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    bool operator==(const HostIdentity&) const = default;
};

struct HostFacts {
    DWORD attributes = 0; // FILE_ATTRIBUTE_...
    FILETIME created = {};
    FILETIME accessed = {};
    FILETIME written = {};
    std::uint64_t sizeBytes = 0; // 0 for a folder
    HostIdentity identity;

    bool IsFolder() const { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
};

// Follows symbolic links. Nothing for what is neither a file nor a folder (pipes, sockets, devices) or is not there.
std::optional<HostFacts> ReadHostFacts(const std::string& hostPath);
// Of what is open.
bool IsOrdinaryFile(int descriptor);
HostIdentity IdentityOf(int descriptor);
std::uint64_t SizeOf(int descriptor);

// The attributes that the host's mode bits cannot hold lie in the extended attribute "user.DOSATTRIB", in the form that
// file servers for Windows use: "0x20" in hexadecimal, perhaps followed by a zero and more.
void StoreAttributes(int descriptor, DWORD attributes);
// A file that is written becomes due for archiving again.
void MarkForArchiving(int descriptor);

// The folder in which an absolute path lies.
std::string FolderOf(const std::string& hostPath);

// The API's error for an errno.
DWORD ErrorFromHost(int hostError);

} // namespace cardsong::kernel
