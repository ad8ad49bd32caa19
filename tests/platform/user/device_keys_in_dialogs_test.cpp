// The column of the device's keys that says which of them the dialog manager uses up, held against the dialog manager.
#include "platform/host/device_keys.h"
#include "tests/platform/user/dialog_builder.h"

#include <gtest/gtest.h>

namespace {

std::vector<WPARAM> g_dispatched;

INT_PTR CALLBACK KeyProcedure(HWND, UINT message, WPARAM wParam, LPARAM)
{
    if (message == WM_KEYDOWN)
        g_dispatched.push_back(wParam);
    return FALSE;
}

TEST(DeviceKeysInDialogs, AreDispatchedUnlessTheTableSaysThatTheyAreUsedUp)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    const HWND dialog = builder.Button(WS_TABSTOP, 4).Button(WS_TABSTOP, 5).Create(nullptr, KeyProcedure);
    for (const auto& key : cardsong::host::DeviceKeys()) {
        g_dispatched.clear();
        MSG message{};
        message.hwnd = dialog;
        message.message = WM_KEYDOWN;
        message.wParam = key.code;
        message.lParam = 1;
        EXPECT_TRUE(IsDialogMessageW(dialog, &message)) << key.code;
        const std::vector<WPARAM> expected(key.isUsedUpByDialogs ? 0 : 1, key.code);
        EXPECT_EQ(g_dispatched, expected) << key.code;
    }
    DestroyWindow(dialog);
}

} // namespace
