// Which folder it is that a path leads to.
#include "platform/device_tree.h"
#include "platform/linux/kernel/host_files.h"

BOOL GetFolderIdentity(LPCWSTR path, FolderIdentity* identity)
{
    using namespace cardsong::kernel;
    const auto hostPath = path ? FindHostPath(path) : std::nullopt;
    const auto facts = hostPath ? ReadHostFacts(*hostPath) : std::nullopt;
    if (!facts || !facts->IsFolder() || !identity) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return FALSE;
    }
    *identity = { facts->identity.device, facts->identity.inode };
    return TRUE;
}
