// Which folder it is that a path leads to.
#include "platform/device_tree.h"

BOOL GetFolderIdentity(LPCWSTR path, FolderIdentity* identity)
{
    const auto hostPath = path != nullptr ? cardsong::kernel::FindHostPath(path) : std::nullopt;
    const HANDLE folder =
        hostPath ? CreateFileW(hostPath->c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                               OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr)
                 : INVALID_HANDLE_VALUE;
    BY_HANDLE_FILE_INFORMATION facts{};
    const bool isKnown = folder != INVALID_HANDLE_VALUE && GetFileInformationByHandle(folder, &facts) &&
                         (facts.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (folder != INVALID_HANDLE_VALUE)
        CloseHandle(folder);
    if (!isKnown || identity == nullptr) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return FALSE;
    }
    *identity = { facts.dwVolumeSerialNumber, ULONGLONG{ facts.nFileIndexHigh } << 32 | facts.nFileIndexLow };
    return TRUE;
}
