#include "platform/linux/kernel/devices.h"

#include "platform/linux/kernel/device_paths.h"
#include "platform/linux/kernel/unicode.h"

namespace cardsong::kernel {
namespace {

constexpr DWORD kCardHostIsReady = 0x9C402008; // the card host's own code: function 0x802, buffered, any access

class DeviceObject final : public KernelObject {
public:
    explicit DeviceObject(bool isCardHost) : m_isCardHost(isCardHost) {}
    bool Answers(DWORD code) const { return m_isCardHost && code == kCardHostIsReady; }

private:
    const bool m_isCardHost;
};

bool IsCardThere()
{
    return !HostFoldersOf(ParseDevicePath(u"\\SDMMC")).empty();
}

} // namespace

HANDLE OpenDevice(std::u16string_view name)
{
    const bool isDisk = EqualIgnoringCase(name, u"DSK3:");
    const bool isCardHost = EqualIgnoringCase(name, u"SDH1:");
    if ((!isDisk && !isCardHost) || !IsCardThere()) {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return INVALID_HANDLE_VALUE;
    }
    const HANDLE handle = InsertHandle(std::make_shared<DeviceObject>(isCardHost));
    return handle ? handle : INVALID_HANDLE_VALUE;
}

} // namespace cardsong::kernel

BOOL DeviceIoControl(HANDLE device, DWORD code, LPVOID, DWORD, LPVOID, DWORD, LPDWORD returnedBytes, OVERLAPPED*)
{
    using namespace cardsong::kernel;
    const auto object = ObjectAs<DeviceObject>(device);
    if (!object)
        return FALSE;
    if (returnedBytes)
        *returnedBytes = 0;
    if (object->Answers(code) && IsCardThere())
        return TRUE;
    SetLastError(ERROR_INVALID_FUNCTION);
    return FALSE;
}
