// One file in the place of another, in one step.
#include "platform/windows/kernel/device_paths.h"

BOOL DeleteAndRenameFile(LPCWSTR target, LPCWSTR source)
{
    using namespace cardsong::kernel;
    const HostPlace from = PlaceOf(source);
    const HostPlace to = WritablePlaceOf(target);
    const DWORD error = from.error != ERROR_SUCCESS ? from.error : from.isInstalled ? ERROR_ACCESS_DENIED : to.error;
    if (error != ERROR_SUCCESS) {
        SetLastError(error);
        return FALSE;
    }
    const DWORD attributes = GetFileAttributesW(from.path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    }
    return MoveFileExW(from.path.c_str(), to.path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}
