// Where the device keeps the folders that have a meaning rather than a name: in its own tree, not among the user's
// folders of the desktop.
#include "platform/windows/kernel/device_calls.h"

#include <algorithm>
#include <shlobj.h>
#include <string_view>

namespace {

constexpr std::wstring_view kDocuments = L"\\My Documents";

bool IsFolder(LPCWSTR path)
{
    const DWORD attributes = cardsong::device::GetFileAttributesW(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

} // namespace

BOOL cardsong::device::SHGetSpecialFolderPathW(HWND, LPWSTR path, int folder, BOOL create)
{
    if (path == nullptr)
        return FALSE;
    *path = 0;
    if (folder != CSIDL_PERSONAL)
        return FALSE;
    if (!IsFolder(kDocuments.data()) && (!create || !cardsong::device::CreateDirectoryW(kDocuments.data(), nullptr)))
        return FALSE;
    *std::copy(kDocuments.begin(), kDocuments.end(), path) = 0;
    return TRUE;
}
