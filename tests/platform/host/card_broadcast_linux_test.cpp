// What the windows hear when the card goes and comes.
#include "platform/linux/host/card_broadcast.h"

#include "platform/ce.h"
#include "platform/linux/user/input.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <thread>
#include <vector>

using namespace cardsong;

namespace {

struct Heard {
    WPARAM event;
    DWORD type;
    WString name;

    friend bool operator==(const Heard&, const Heard&) = default;
};

std::vector<Heard> g_heard;

LRESULT CALLBACK Hear(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != WM_DEVICECHANGE)
        return DefWindowProcW(window, message, wParam, lParam);
    const auto* const port = reinterpret_cast<const DEV_BROADCAST_PORT_W*>(lParam);
    const auto nameUnits = (port->dbcp_size - offsetof(DEV_BROADCAST_PORT_W, dbcp_name)) / sizeof(WCHAR);
    g_heard.push_back(
        { wParam, port->dbcp_devicetype, WString(static_cast<const WCHAR*>(port->dbcp_name), nameUnits) });
    return TRUE;
}

} // namespace

TEST(CardBroadcast, TheCardsPortIsNamedToAWindowOfAnotherThreadWhichIsWaitedFor)
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = Hear;
    windowClass.lpszClassName = TEXT("HEARER");
    RegisterClassW(&windowClass);
    const HWND window =
        CreateWindowExW(0, TEXT("HEARER"), TEXT(""), WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    g_heard.clear();
    std::size_t heardByThen = 0;
    std::thread system([&] {
        host::BroadcastCardChange(host::CardChange::Gone);
        host::BroadcastCardChange(host::CardChange::Come);
        heardByThen = g_heard.size();
        PostMessageW(window, WM_USER, 0, 0);
    });
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) && message.message != WM_USER)
        DispatchMessageW(&message);
    system.join();
    EXPECT_EQ(heardByThen, 2U);
    const WString name(TEXT("DSK3:"), 6); // with its end
    EXPECT_EQ(g_heard, (std::vector<Heard>{ { DBT_DEVICEREMOVECOMPLETE, DBT_DEVTYP_PORT, name },
                                            { DBT_DEVICEARRIVAL, DBT_DEVTYP_PORT, name } }));
    DestroyWindow(window);
    UnregisterClassW(TEXT("HEARER"), nullptr);
    user::ResetWindows();
}
