#include "platform/linux/host/card_broadcast.h"

#include "platform/ce.h"

#include <cstddef>

namespace cardsong::host {
namespace {

struct CardPort {
    DWORD size;
    DWORD deviceType;
    DWORD reserved;
    WCHAR name[6];
};
static_assert(offsetof(CardPort, name) == offsetof(DEV_BROADCAST_PORT_W, dbcp_name));

} // namespace

void BroadcastCardChange(CardChange change)
{
    const CardPort card{ sizeof card, DBT_DEVTYP_PORT, 0, TEXT("DSK3:") };
    const WPARAM event = change == CardChange::Gone ? DBT_DEVICEREMOVECOMPLETE : DBT_DEVICEARRIVAL;
    SendMessageW(HWND_BROADCAST, WM_DEVICECHANGE, event, reinterpret_cast<LPARAM>(&card));
}

} // namespace cardsong::host
