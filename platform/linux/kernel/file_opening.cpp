#include "platform/linux/kernel/file_opening.h"

#include "platform/linux/kernel/device_paths.h"
#include "platform/linux/kernel/host_files.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cardsong::kernel {
namespace {

OpenedFile Failure(DWORD error)
{
    OpenedFile failed;
    failed.error = error;
    return failed;
}

int HostAccess(DWORD access)
{
    if ((access & GENERIC_WRITE) == 0)
        return O_RDONLY;
    return (access & GENERIC_READ) != 0 ? O_RDWR : O_WRONLY;
}

bool CopyAll(int from, int to)
{
    std::array<char, 16384> block;
    for (;;) {
        const auto got = read(from, block.data(), block.size());
        if (got <= 0)
            return got == 0;
        for (ssize_t done = 0; done < got;) {
            const auto put = write(to, block.data() + done, static_cast<std::size_t>(got - done));
            if (put < 0)
                return false;
            done += put;
        }
    }
}

// The user's copy of an installed file that is to be changed; the copy appears whole or not at all.
std::string CopyToUser(const DevicePath& path, const std::string& installedPath, bool withContents, DWORD& error)
{
    const auto place = PlaceForNew(path, error);
    if (place.empty())
        return {};
    const std::string unfinished = place + ".unfinished";
    const int from = open(installedPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    const int to = open(unfinished.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    const bool isCopied = from >= 0 && to >= 0 && (!withContents || CopyAll(from, to));
    if (from >= 0)
        close(from);
    if (to >= 0)
        close(to);
    if (isCopied && rename(unfinished.c_str(), place.c_str()) == 0)
        return place;
    error = ErrorFromHost(errno);
    unlink(unfinished.c_str());
    return {};
}

bool MayBeWritten(const DevicePath& path, const LookUp& found)
{
    const auto facts = ReadHostFacts(found.hostPath);
    const bool isReadOnly = !facts || ((facts->attributes & FILE_ATTRIBUTE_READONLY) != 0 && !found.isInstalled);
    return !isReadOnly && !LeadsOffTheCard(path, found.hostPath);
}

// A scan opens thousands of songs by the very names that it listed: no look for them comes first. Nothing is opened
// when there is no ordinary file of that name.
int OpenAsWritten(const DevicePath& path)
{
    const auto hostPath = FirstPlaceOnHost(path);
    // Not blocking: a pipe must not stop the program.
    const int descriptor = hostPath.empty() ? -1 : open(hostPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0 || IsOrdinaryFile(descriptor))
        return descriptor;
    close(descriptor);
    return -1;
}

OpenedFile OpenExisting(const DevicePath& path, const LookUp& found, DWORD access, bool losesContents)
{
    const bool isWritten = (access & GENERIC_WRITE) != 0 || losesContents;
    if (found.kind != HostKind::File || (isWritten && !MayBeWritten(path, found)))
        return Failure(ERROR_ACCESS_DENIED);
    DWORD error = ERROR_ACCESS_DENIED;
    const bool isCopied = isWritten && found.isInstalled;
    const auto hostPath = isCopied ? CopyToUser(path, found.hostPath, !losesContents, error) : found.hostPath;
    if (hostPath.empty())
        return Failure(error);
    OpenedFile opened;
    // Not blocking: a pipe put in the file's place since the look must not stop the program.
    const int hostAccess = losesContents && (access & GENERIC_WRITE) == 0 ? O_RDWR : HostAccess(access);
    opened.descriptor = open(hostPath.c_str(), hostAccess | O_CLOEXEC | O_NONBLOCK);
    if (opened.descriptor < 0)
        return Failure(ErrorFromHost(errno));
    opened.existed = true;
    opened.losesContents = losesContents;
    return opened;
}

OpenedFile CreateFresh(const DevicePath& path, DWORD access, DWORD attributes)
{
    DWORD error = ERROR_PATH_NOT_FOUND;
    const auto hostPath = PlaceForNew(path, error);
    if (hostPath.empty())
        return Failure(error);
    OpenedFile opened;
    opened.descriptor = open(hostPath.c_str(), HostAccess(access) | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (opened.descriptor < 0)
        return Failure(ErrorFromHost(errno));
    if ((attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM)) != 0)
        StoreAttributes(opened.descriptor, attributes | FILE_ATTRIBUTE_ARCHIVE);
    return opened;
}

} // namespace

OpenedFile OpenDeviceFile(std::u16string_view devicePath, DWORD access, DWORD disposition, DWORD attributes)
{
    const auto path = ParseDevicePath(devicePath);
    if (devicePath.empty())
        return Failure(ERROR_PATH_NOT_FOUND);
    if (disposition < CREATE_NEW || disposition > TRUNCATE_EXISTING ||
        (disposition == TRUNCATE_EXISTING && (access & GENERIC_WRITE) == 0))
        return Failure(ERROR_INVALID_PARAMETER);
    if (disposition == OPEN_EXISTING && access == GENERIC_READ && !path.endsInSeparator) {
        OpenedFile opened;
        opened.descriptor = OpenAsWritten(path);
        opened.existed = true;
        if (opened.descriptor >= 0)
            return opened;
    }
    const auto found = FindOnHost(path);
    if (found.Found() && disposition == CREATE_NEW)
        return Failure(ERROR_FILE_EXISTS);
    if (found.Found() && !path.endsInSeparator)
        return OpenExisting(path, found, access, disposition == CREATE_ALWAYS || disposition == TRUNCATE_EXISTING);
    const bool creates = disposition != OPEN_EXISTING && disposition != TRUNCATE_EXISTING;
    if (path.endsInSeparator) {
        const bool isFolder = found.Found() && !HostFoldersOf(path).empty();
        return Failure(isFolder ? ERROR_ACCESS_DENIED : found.Found() || creates ? ERROR_INVALID_NAME : found.error);
    }
    return creates ? CreateFresh(path, access, attributes) : Failure(found.error);
}

} // namespace cardsong::kernel
