#include "app/storage_card.h"

#include "common/file_search.h"

namespace {

constexpr DWORD kQueryDeviceAccess = 1;
// Asks the card host whether its card can be used: device type 0x9C40, function 0x802, buffered, any access.
constexpr DWORD kCardHostQuery = 0x9C402008;

HANDLE OpenDriver(const WCHAR* name)
{
    return CreateFileW(name, kQueryDeviceAccess, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

} // namespace

int IsStorageCardPresent()
{
    const HANDLE slot = OpenDriver(TEXT("DSK3:"));
    const HANDLE cardHost = OpenDriver(TEXT("SDH1:"));
    // On the two roads that find no usable card the program is about to end, and the system closes what is open.
    if (slot == INVALID_HANDLE_VALUE || cardHost == INVALID_HANDLE_VALUE)
        return 0;
    DWORD returnedBytes = 0;
    if (!DeviceIoControl(cardHost, kCardHostQuery, nullptr, 0, nullptr, 0, &returnedBytes, nullptr))
        return 0;
    CloseHandle(slot);
    CloseHandle(cardHost);
    return IsPathThere(TEXT("SDMMC\\")) ? 1 : 0;
}
