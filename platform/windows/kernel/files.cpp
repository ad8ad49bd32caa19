// Files and modules by device path: the path is translated, the system does the rest.
#include "platform/windows/kernel/device_calls.h"
#include "platform/windows/kernel/device_paths.h"
#include "platform/windows/kernel/stream_drivers.h"

namespace cardsong::device {
namespace {

using namespace kernel;

template <typename Result>
Result Fail(DWORD error, Result result)
{
    SetLastError(error);
    return result;
}

// The user's copy of an installed file that is to be changed; the copy appears whole or not at all.
bool CopyToUser(const HostPath& installed, const HostPath& place)
{
    const HostPath unfinished = place + L".unfinished";
    return CopyFileW(installed.c_str(), unfinished.c_str(), FALSE) &&
           MoveFileExW(unfinished.c_str(), place.c_str(), MOVEFILE_REPLACE_EXISTING);
}

bool IsWriting(DWORD access, DWORD disposition)
{
    return (access & (GENERIC_WRITE | GENERIC_ALL)) != 0 || disposition != OPEN_EXISTING;
}

// Where a file is that is to be opened; an installed one that is to be written has become the user's own.
HostPlace PlaceToOpen(LPCWSTR name, bool isWriting, bool keepsContents)
{
    HostPlace place = PlaceOf(name);
    if (place.error != ERROR_SUCCESS || !isWriting)
        return place;
    HostPlace own = WritablePlaceOf(name);
    if (place.isInstalled && keepsContents && !CopyToUser(place.path, own.path))
        own.error = GetLastError();
    return own;
}

} // namespace

HANDLE CreateFileW(LPCWSTR name, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security, DWORD disposition,
                   DWORD flagsAndAttributes, HANDLE templateFile)
{
    if (name != nullptr && IsDeviceName(name))
        return OpenStreamDriver(name);
    if (name != nullptr && disposition == CREATE_NEW && PlaceOf(name).isInstalled)
        return Fail(ERROR_FILE_EXISTS, INVALID_HANDLE_VALUE);
    const bool keepsContents = disposition != CREATE_ALWAYS;
    const HostPlace place = PlaceToOpen(name, IsWriting(access, disposition), keepsContents);
    if (place.error != ERROR_SUCCESS)
        return Fail(place.error, INVALID_HANDLE_VALUE);
    return ::CreateFileW(place.path.c_str(), access, share, security, disposition, flagsAndAttributes, templateFile);
}

// A path that ends in a separator answers with the folder itself, on an empty card too. That is how the device's
// programs ask for a card ("SDMMC\"), though the desktop finds nothing there.
HANDLE FindFirstFileW(LPCWSTR pattern, WIN32_FIND_DATAW* data)
{
    HostPlace place = PlaceOf(pattern);
    if (place.error != ERROR_SUCCESS)
        return Fail(place.error, INVALID_HANDLE_VALUE);
    while (!place.path.empty() && place.path.back() == L'\\')
        place.path.pop_back();
    return ::FindFirstFileW(place.path.c_str(), data);
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
    return ::DeleteFileW(place.path.c_str());
}

BOOL CreateDirectoryW(LPCWSTR name, SECURITY_ATTRIBUTES* security)
{
    if (PlaceOf(name).isInstalled)
        return Fail(ERROR_ALREADY_EXISTS, FALSE);
    const HostPlace place = WritablePlaceOf(name);
    return place.error == ERROR_SUCCESS ? ::CreateDirectoryW(place.path.c_str(), security) : Fail(place.error, FALSE);
}

std::FILE* _wfopen(const wchar_t* name, const wchar_t* mode)
{
    if (name == nullptr || mode == nullptr || IsDeviceName(name))
        return nullptr;
    const std::wstring_view how = mode;
    const bool isWriting = how.find_first_of(L"wa+") != std::wstring_view::npos;
    const HostPlace place = PlaceToOpen(name, isWriting, !how.starts_with(L'w'));
    return place.error == ERROR_SUCCESS ? ::_wfopen(place.path.c_str(), mode) : nullptr;
}

// Only as data: no code of a module ever runs here.
HMODULE LoadLibraryExW(LPCWSTR name, HANDLE file, DWORD flags)
{
    if (name == nullptr || *name == L'\0' || (flags & LOAD_LIBRARY_AS_DATAFILE) == 0)
        return Fail(ERROR_INVALID_PARAMETER, HMODULE{});
    const bool isBare = WStringView(name).find_first_of(L"\\/") == WStringView::npos;
    const HostPlace place = PlaceOf(((isBare ? WString(L"\\Windows\\") : WString()) + name).c_str());
    return place.error == ERROR_SUCCESS ? ::LoadLibraryExW(place.path.c_str(), file, flags)
                                        : Fail(place.error, HMODULE{});
}

} // namespace cardsong::device
