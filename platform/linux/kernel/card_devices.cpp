#include "platform/linux/kernel/card_devices.h"

#include "platform/linux/kernel/device_paths.h"

namespace cardsong::kernel {
namespace {

constexpr DWORD kCardHostIsReady = 0x9C402008; // the card host's own code: function 0x802, buffered, any access

bool IsCardThere()
{
    return !HostFoldersOf(ParseDevicePath(u"\\SDMMC")).empty();
}

class CardDisk final : public DeviceObject {
public:
    DWORD Control(DWORD, const void*) override { return ERROR_INVALID_FUNCTION; }
};

class CardHost final : public DeviceObject {
public:
    DWORD Control(DWORD code, const void*) override
    {
        return code == kCardHostIsReady && IsCardThere() ? ERROR_SUCCESS : ERROR_INVALID_FUNCTION;
    }
};

} // namespace

std::shared_ptr<DeviceObject> OpenCardDisk()
{
    return IsCardThere() ? std::make_shared<CardDisk>() : nullptr;
}

std::shared_ptr<DeviceObject> OpenCardHost()
{
    return IsCardThere() ? std::make_shared<CardHost>() : nullptr;
}

} // namespace cardsong::kernel
