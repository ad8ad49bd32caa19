#include "app/card_removal.h"

#include "app/command_ids.h"
#include "app/no_card_notice.h"
#include "app/player_state.h"
#include "common/trace_log.h"

#include <cstddef>

namespace {

constexpr WStringView kCardPort = TEXT("DSK3:");

bool IsPort(const DEV_BROADCAST_HDR* header)
{
    return header != nullptr && header->dbch_size >= sizeof(DEV_BROADCAST_HDR) &&
           header->dbch_devicetype == DBT_DEVTYP_PORT;
}

// `port`: a header that IsPort takes.
bool IsCardPort(const DEV_BROADCAST_HDR* port)
{
    constexpr std::size_t nameAt = offsetof(DEV_BROADCAST_PORT_W, dbcp_name);
    constexpr std::size_t endOfName = nameAt + (kCardPort.size() + 1) * sizeof(WCHAR);
    if (port->dbch_size < endOfName)
        return false;
    const auto* const name = reinterpret_cast<const WCHAR*>(reinterpret_cast<const std::byte*>(port) + nameAt);
    return WStringView(name, kCardPort.size()) == kCardPort && name[kCardPort.size()] == 0;
}

// Silence comes first: the notice waits for the user.
void LeaveWithoutCard(HWND window)
{
    if (IsSongLoaded())
        SendMessageW(window, WM_COMMAND, kCommandStop, 0);
    TellThatNoCardIsThere();
    SendMessageW(window, WM_COMMAND, kCommandExit, 0);
}

} // namespace

LRESULT TakeDeviceChange(HWND window, WPARAM event, LPARAM header)
{
    if (event != DBT_DEVICEREMOVECOMPLETE)
        return DefWindowProcW(window, WM_DEVICECHANGE, event, header);
    TraceLog(kLogModule, TEXT("WM_DEVICECHANGE!\r\n"));
    const auto* const device = reinterpret_cast<const DEV_BROADCAST_HDR*>(header);
    if (!IsPort(device))
        return TRUE;
    TraceLog(kLogModule, TEXT("DBT_DEVTYP_PORT!\r\n"));
    if (!IsCardPort(device))
        return TRUE;
    TraceLog(kLogModule, TEXT("DSK3!\r\n"));
    LeaveWithoutCard(window);
    return TRUE;
}
