#include "platform/windows/kernel/stream_drivers.h"

#include "platform/windows/kernel/device_paths.h"
#include "platform/windows/kernel/host_paths.h"

namespace cardsong::kernel {
namespace {

constexpr DWORD kCardHostIsReady = 0x9C402008; // the card host's own code: function 0x802, buffered, any access

bool IsSameName(WStringView name, const wchar_t* other)
{
    return CompareStringOrdinal(name.data(), static_cast<int>(name.size()), other, -1, TRUE) == CSTR_EQUAL;
}

// A handle to the card's folder stands for its host; the disk stands for itself.
HANDLE OpenCardFolder()
{
    const HostPlace card = PlaceOf(L"\\SDMMC");
    if (card.error != ERROR_SUCCESS)
        return INVALID_HANDLE_VALUE;
    return ::CreateFileW(card.path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                         OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

bool IsFolderHandle(HANDLE handle)
{
    BY_HANDLE_FILE_INFORMATION facts;
    return GetFileInformationByHandle(handle, &facts) && (facts.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

} // namespace

HANDLE OpenStreamDriver(WStringView name)
{
    const bool isDisk = IsSameName(name, L"DSK3:");
    const HANDLE card = isDisk || IsSameName(name, L"SDH1:") ? OpenCardFolder() : INVALID_HANDLE_VALUE;
    if (card == INVALID_HANDLE_VALUE || !IsFolderHandle(card)) {
        if (card != INVALID_HANDLE_VALUE)
            CloseHandle(card);
        SetLastError(ERROR_FILE_NOT_FOUND);
        return INVALID_HANDLE_VALUE;
    }
    if (!isDisk)
        return card;
    CloseHandle(card);
    return ::CreateFileW(L"NUL", 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
}

} // namespace cardsong::kernel

// No call reaches a driver of this machine: every other code is unknown to the device's own.
BOOL cardsong::device::DeviceIoControl(HANDLE device, DWORD code, LPVOID, DWORD, LPVOID, DWORD, LPDWORD returnedBytes,
                                       OVERLAPPED*)
{
    using namespace kernel;
    SetLastError(ERROR_SUCCESS);
    if (GetFileType(device) == FILE_TYPE_UNKNOWN && GetLastError() != ERROR_SUCCESS)
        return FALSE;
    if (returnedBytes != nullptr)
        *returnedBytes = 0;
    const bool isReady = code == kCardHostIsReady && IsFolderHandle(device) && IsFolder(PlaceOf(L"\\SDMMC").path);
    if (!isReady)
        SetLastError(ERROR_INVALID_FUNCTION);
    return isReady ? TRUE : FALSE;
}
