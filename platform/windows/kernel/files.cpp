// Files by device path: the path is translated, the system does the rest.
#include "platform/windows/kernel/device_calls.h"
#include "platform/windows/kernel/device_paths.h"
#include "platform/windows/kernel/host_paths.h"
#include "platform/windows/kernel/stream_drivers.h"

#include <cerrno>

namespace cardsong::device {
namespace {

using namespace kernel;

// Any other right could change a file. The last two hold SYNCHRONIZE, too.
constexpr DWORD kReadingRights = GENERIC_READ | GENERIC_EXECUTE | FILE_GENERIC_READ | FILE_GENERIC_EXECUTE;

template <typename Result>
Result Fail(DWORD error, Result result)
{
    SetLastError(error);
    return result;
}

HostPlace FailedPlace(DWORD error)
{
    return { error, {}, false, false };
}

// The user's copy of an installed file that is to be changed; the copy appears whole or not at all.
bool CopyToUser(const HostPath& installed, const HostPath& place)
{
    const HostPath unfinished = place + L".unfinished";
    const bool isCopied = CopyFileW(installed.c_str(), unfinished.c_str(), FALSE) &&
                          SetFileAttributesW(unfinished.c_str(), FILE_ATTRIBUTE_ARCHIVE) &&
                          MoveFileExW(unfinished.c_str(), place.c_str(), MOVEFILE_REPLACE_EXISTING);
    const DWORD error = GetLastError();
    if (!isCopied)
        ::DeleteFileW(unfinished.c_str());
    SetLastError(error);
    return isCopied;
}

// Some systems let their administrator write to any file, a read-only one too. So the question is asked here.
bool IsReadOnlyFile(const HostPath& path)
{
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) == FILE_ATTRIBUTE_READONLY;
}

// An installed file that is to be changed has become the user's own.
HostPlace PlaceToChange(LPCWSTR name, const HostPlace& found, DWORD disposition)
{
    if (found.exists && !found.isInstalled) {
        const bool isFixed = IsReadOnlyFile(found.path) || LeadsOffTheCard(ParseDevicePath(name), found.path);
        return isFixed ? FailedPlace(ERROR_ACCESS_DENIED) : found;
    }
    if (found.exists && IsFolder(found.path))
        return FailedPlace(ERROR_ACCESS_DENIED);
    HostPlace own = PlaceForNew(name);
    if (own.error != ERROR_SUCCESS)
        return own;
    if (own.path.ends_with(L'\\'))
        return FailedPlace(ERROR_INVALID_NAME);
    if (found.exists && disposition != CREATE_ALWAYS && !CopyToUser(found.path, own.path))
        own.error = GetLastError();
    return own;
}

HostPlace PlaceToOpen(LPCWSTR name, DWORD access, DWORD disposition, DWORD flags)
{
    const bool creates = disposition != OPEN_EXISTING && disposition != TRUNCATE_EXISTING;
    const bool changes = (access & ~kReadingRights) != 0 || (flags & FILE_FLAG_DELETE_ON_CLOSE) != 0 ||
                         disposition == CREATE_ALWAYS || disposition == TRUNCATE_EXISTING;
    const HostPlace found = PlaceOf(name);
    if (found.exists && disposition == CREATE_NEW)
        return FailedPlace(ERROR_FILE_EXISTS);
    return (found.exists && changes) || (!found.exists && creates) ? PlaceToChange(name, found, disposition) : found;
}

bool CanBeOpened(DWORD access, DWORD disposition)
{
    const bool isKnown = disposition >= CREATE_NEW && disposition <= TRUNCATE_EXISTING;
    return isKnown && (disposition != TRUNCATE_EXISTING || (access & (GENERIC_WRITE | GENERIC_ALL)) != 0);
}

} // namespace

HANDLE CreateFileW(LPCWSTR name, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security, DWORD disposition,
                   DWORD flagsAndAttributes, HANDLE templateFile)
{
    if (name != nullptr && IsDeviceName(name))
        return OpenStreamDriver(name);
    if (name != nullptr && *name != L'\0' && !CanBeOpened(access, disposition))
        return Fail(ERROR_INVALID_PARAMETER, INVALID_HANDLE_VALUE);
    const bool replaces = disposition == CREATE_ALWAYS && PlaceOf(name).exists;
    const HostPlace place = PlaceToOpen(name, access, disposition, flagsAndAttributes);
    if (place.error != ERROR_SUCCESS)
        return Fail(place.error, INVALID_HANDLE_VALUE);
    const HANDLE file =
        ::CreateFileW(place.path.c_str(), access, share, security, disposition, flagsAndAttributes, templateFile);
    if (replaces && file != INVALID_HANDLE_VALUE)
        SetLastError(ERROR_ALREADY_EXISTS); // the system saw no file in the user's tree
    return file;
}

DWORD GetFileAttributesW(LPCWSTR name)
{
    const HostPlace place = PlaceOf(name);
    return place.error == ERROR_SUCCESS ? ::GetFileAttributesW(place.path.c_str())
                                        : Fail(place.error, INVALID_FILE_ATTRIBUTES);
}

BOOL GetFileAttributesExW(LPCWSTR name, GET_FILEEX_INFO_LEVELS level, LPVOID data)
{
    const HostPlace place = PlaceOf(name);
    return place.error == ERROR_SUCCESS ? ::GetFileAttributesExW(place.path.c_str(), level, data)
                                        : Fail(place.error, FALSE);
}

BOOL DeleteFileW(LPCWSTR name)
{
    const HostPlace place = PlaceOf(name);
    if (place.error != ERROR_SUCCESS || place.isInstalled)
        return Fail(place.isInstalled ? DWORD{ ERROR_ACCESS_DENIED } : place.error, FALSE);
    if (place.exists && LeadsOffTheCard(ParseDevicePath(name), FolderOf(place.path)))
        return Fail(ERROR_ACCESS_DENIED, FALSE); // a link on the card itself may go
    return ::DeleteFileW(place.path.c_str());
}

BOOL CreateDirectoryW(LPCWSTR name, SECURITY_ATTRIBUTES* security)
{
    if (PlaceOf(name).exists)
        return Fail(ERROR_ALREADY_EXISTS, FALSE);
    const HostPlace place = PlaceForNew(name);
    return place.error == ERROR_SUCCESS ? ::CreateDirectoryW(place.path.c_str(), security) : Fail(place.error, FALSE);
}

std::FILE* _wfopen(const wchar_t* name, const wchar_t* mode)
{
    const std::wstring_view how = mode != nullptr ? mode : L"";
    const bool isMode = how.starts_with(L'r') || how.starts_with(L'w') || how.starts_with(L'a');
    if (!isMode || name == nullptr || IsDeviceName(name)) {
        errno = isMode ? ENOENT : EINVAL;
        return nullptr;
    }
    const bool writes = !how.starts_with(L'r') || how.find(L'+') != std::wstring_view::npos;
    const DWORD disposition = how[0] == L'r' ? OPEN_EXISTING : how[0] == L'w' ? CREATE_ALWAYS : OPEN_ALWAYS;
    const HostPlace place = PlaceToOpen(name, writes ? GENERIC_WRITE : GENERIC_READ, disposition, 0);
    if (place.error == ERROR_SUCCESS)
        return ::_wfopen(place.path.c_str(), mode);
    errno = place.error == ERROR_ACCESS_DENIED ? EACCES : ENOENT;
    return nullptr;
}

} // namespace cardsong::device
