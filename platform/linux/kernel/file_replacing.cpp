// One file in the place of another, in one step.
#include "platform/linux/kernel/device_paths.h"
#include "platform/linux/kernel/open_files.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace cardsong::kernel {
namespace {

// The new name is on the disk when this returns; a file system that cannot promise that has done what it can.
void FlushFolderOf(const std::string& hostPath)
{
    const int folder = open(FolderOf(hostPath).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return;
    fsync(folder);
    close(folder);
}

// The host path that `target` has or will have; empty, with `error` set, when it cannot be replaced.
std::string PlaceOfTarget(const DevicePath& target, DWORD& error)
{
    const auto found = FindOnHost(target);
    if (found.Found() && !found.isInstalled) {
        const auto facts = ReadHostFacts(found.hostPath);
        if (facts && !facts->IsFolder() && (facts->attributes & FILE_ATTRIBUTE_READONLY) == 0 &&
            !IsOpen(facts->identity) && !LeadsOffTheCard(target, FolderOf(found.hostPath)))
            return found.hostPath;
        error = ERROR_ACCESS_DENIED;
        return {};
    }
    return PlaceForNew(target, error);
}

DWORD ReplaceFile(const DevicePath& target, const DevicePath& source)
{
    const auto from = FindOnHost(source);
    if (!from.Found())
        return from.error;
    const auto facts = ReadHostFacts(from.hostPath);
    if (from.isInstalled || !facts || facts->IsFolder())
        return ERROR_ACCESS_DENIED;
    if (source.endsInSeparator || target.endsInSeparator)
        return ERROR_INVALID_NAME;
    if (LeadsOffTheCard(source, FolderOf(from.hostPath)))
        return ERROR_ACCESS_DENIED;
    if (IsOpen(facts->identity))
        return ERROR_SHARING_VIOLATION;
    DWORD error = ERROR_PATH_NOT_FOUND;
    const auto to = PlaceOfTarget(target, error);
    if (to.empty())
        return error;
    if (std::rename(from.hostPath.c_str(), to.c_str()) != 0)
        return ErrorFromHost(errno);
    FlushFolderOf(to);
    return ERROR_SUCCESS;
}

} // namespace
} // namespace cardsong::kernel

BOOL DeleteAndRenameFile(LPCWSTR target, LPCWSTR source)
{
    using namespace cardsong::kernel;
    const DWORD error = target && source && *target && *source
                            ? ReplaceFile(ParseDevicePath(target), ParseDevicePath(source))
                            : ERROR_PATH_NOT_FOUND;
    if (error != ERROR_SUCCESS)
        SetLastError(error);
    return error == ERROR_SUCCESS ? TRUE : FALSE;
}
