// One file in the place of another, in one step.
#include "platform/windows/kernel/device_paths.h"
#include "platform/windows/kernel/host_paths.h"

namespace cardsong::kernel {
namespace {

// Why what is at this place cannot be put elsewhere, or another in its place; ERROR_SUCCESS when it can.
DWORD Refusal(LPCWSTR name, const HostPlace& place, DWORD forbiddenAttributes)
{
    const DWORD attributes = place.exists ? ::GetFileAttributesW(place.path.c_str()) : 0;
    const bool isElsewhere = place.exists && LeadsOffTheCard(ParseDevicePath(name), FolderOf(place.path));
    return isElsewhere || (attributes & forbiddenAttributes) != 0 ? DWORD{ ERROR_ACCESS_DENIED } : place.error;
}

HostPlace PlaceOfTarget(LPCWSTR target)
{
    HostPlace found = PlaceOf(target);
    return found.exists && !found.isInstalled ? found : PlaceForNew(target);
}

} // namespace
} // namespace cardsong::kernel

BOOL DeleteAndRenameFile(LPCWSTR target, LPCWSTR source)
{
    using namespace cardsong::kernel;
    const HostPlace from = PlaceOf(source);
    DWORD error = from.isInstalled ? DWORD{ ERROR_ACCESS_DENIED } : Refusal(source, from, FILE_ATTRIBUTE_DIRECTORY);
    if (error == ERROR_SUCCESS && !Exists(from.path))
        error = GetLastError();
    HostPlace to;
    if (error == ERROR_SUCCESS) { // a missing file makes no folder for its target
        to = PlaceOfTarget(target);
        error = Refusal(target, to, FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY);
    }
    if (error != ERROR_SUCCESS) {
        SetLastError(error);
        return FALSE;
    }
    return MoveFileExW(from.path.c_str(), to.path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}
