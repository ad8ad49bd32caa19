#include "platform/linux/kernel/devices.h"

#include "platform/linux/kernel/card_devices.h"
#include "platform/linux/kernel/fm_transmitter_device.h"
#include "platform/linux/kernel/unicode.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

namespace cardsong::kernel {
namespace {

struct Driver {
    std::u16string_view name;
    std::shared_ptr<DeviceObject> (*open)(); // null when there is no such device
};

constexpr Driver kDrivers[] = {
    { u"DSK3:", OpenCardDisk },
    { u"SDH1:", OpenCardHost },
    { u"FMT0:", OpenFmTransmitter },
};

} // namespace

HANDLE OpenDevice(std::u16string_view name)
{
    const auto* const driver =
        std::ranges::find_if(kDrivers, [&](const Driver& row) { return EqualIgnoringCase(name, row.name); });
    auto device = driver != std::end(kDrivers) ? driver->open() : nullptr;
    if (!device) {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return INVALID_HANDLE_VALUE;
    }
    const HANDLE handle = InsertHandle(std::move(device));
    return handle ? handle : INVALID_HANDLE_VALUE;
}

} // namespace cardsong::kernel

BOOL DeviceIoControl(HANDLE device, DWORD code, LPVOID input, DWORD, LPVOID, DWORD, LPDWORD returnedBytes, OVERLAPPED*)
{
    using namespace cardsong::kernel;
    const auto object = ObjectAs<DeviceObject>(device);
    if (!object)
        return FALSE;
    if (returnedBytes)
        *returnedBytes = 0;
    const DWORD error = object->Control(code, input);
    if (error != ERROR_SUCCESS)
        SetLastError(error);
    return error == ERROR_SUCCESS ? TRUE : FALSE;
}
