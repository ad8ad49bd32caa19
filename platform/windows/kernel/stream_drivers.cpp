#include "platform/windows/kernel/stream_drivers.h"

#include "platform/windows/kernel/device_paths.h"

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

bool IsFolder(HANDLE handle)
{
    BY_HANDLE_FILE_INFORMATION facts;
    return GetFileInformationByHandle(handle, &facts) && (facts.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

} // namespace

HANDLE OpenStreamDriver(WStringView name)
{
    const bool isDisk = IsSameName(name, L"DSK3:");
    const HANDLE card = isDisk || IsSameName(name, L"SDH1:") ? OpenCardFolder() : INVALID_HANDLE_VALUE;
    if (card == INVALID_HANDLE_VALUE || !IsFolder(card)) {
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

BOOL cardsong::device::DeviceIoControl(HANDLE device, DWORD code, LPVOID input, DWORD inputBytes, LPVOID output,
                                       DWORD outputBytes, LPDWORD returnedBytes, OVERLAPPED* overlapped)
{
    using namespace kernel;
    if (code != kCardHostIsReady || !IsFolder(device))
        return ::DeviceIoControl(device, code, input, inputBytes, output, outputBytes, returnedBytes, overlapped);
    if (returnedBytes != nullptr)
        *returnedBytes = 0;
    const auto card = FindHostPath(L"\\SDMMC");
    if (!card)
        SetLastError(ERROR_INVALID_FUNCTION);
    return card ? TRUE : FALSE;
}
