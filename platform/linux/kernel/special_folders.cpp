// Where the device keeps the folders that have a meaning rather than a name.
#include "platform/linux/ce/kernel.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr std::u16string_view kDocuments = u"\\My Documents";

bool IsFolder(LPCWSTR path)
{
    const DWORD attributes = GetFileAttributesW(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

} // namespace

BOOL SHGetSpecialFolderPathW(HWND, LPWSTR path, int folder, BOOL create)
{
    if (!path)
        return FALSE;
    *path = 0;
    if (folder != CSIDL_PERSONAL)
        return FALSE;
    if (!IsFolder(kDocuments.data()) && (!create || !CreateDirectoryW(kDocuments.data(), nullptr)))
        return FALSE;
    *std::copy(kDocuments.begin(), kDocuments.end(), path) = 0;
    return TRUE;
}
