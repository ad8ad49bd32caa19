#include "platform/windows/screen/desktop_keyboard.h"

#include "platform/host/device_keys.h"
#include "platform/windows/screen/device_screen.h"

#include <algorithm>
#include <vector>

namespace cardsong::screen {
namespace {

constexpr int kBottomEdgePx = 40; // of the device's, as high as the buttons of soft keys and alerts lie
constexpr UINT kLastButtonKey = VK_F7;

DesktopKeys g_keys;

bool IsMainWindow(HWND window)
{
    WCHAR name[64] = {};
    GetClassNameW(window, name, 64);
    return g_keys.mainWindowClass != nullptr && WString(name) == g_keys.mainWindowClass;
}

template <typename Key>
const Key* FindKey(WPARAM code, std::span<const Key> keys)
{
    const auto isIt = [code](const Key& key) {
        return code != 0 && std::ranges::find(key.keys.desktopCodes, code) != key.keys.desktopCodes.end();
    };
    const auto found = std::ranges::find_if(keys, isIt);
    return found != keys.end() ? &*found : nullptr;
}

bool TurnIntoDeviceKey(MSG& message)
{
    for (const host::DeviceKey& key : host::DeviceKeys()) {
        for (const UINT code : key.desktopCodes) {
            if (code != 0 && code == message.wParam) {
                message.wParam = key.code;
                return true;
            }
        }
    }
    return false;
}

bool Takes(HWND window, WORD command)
{
    const HWND control = GetDlgItem(window, command);
    return IsMainWindow(window) && IsWindowEnabled(window) && (control == nullptr || IsWindowEnabled(control));
}

bool IsHeld(const MSG& message)
{
    return (HIWORD(static_cast<ULONG_PTR>(message.lParam)) & KF_REPEAT) != 0;
}

bool TurnIntoCommand(MSG& message)
{
    const CommandKey* const key = FindKey(message.wParam, g_keys.commands);
    const HWND active = GetActiveWindow();
    if (key == nullptr || !Takes(active, key->command) || (IsHeld(message) && key->whenHeld == WhenKeyIsHeld::ActsOnce))
        return false;
    message.hwnd = active;
    message.message = WM_COMMAND;
    message.wParam = key->command;
    message.lParam = 0;
    return true;
}

void Tap(HWND window, POINT client)
{
    const LPARAM place = MAKELPARAM(client.x, client.y);
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, place);
    PostMessageW(window, WM_LBUTTONUP, 0, place);
}

void TapAt(HWND window, POINT onScreen)
{
    POINT place = ToDesktop(onScreen);
    ScreenToClient(window, &place);
    const HWND child = ChildWindowFromPointEx(window, place, CWP_SKIPINVISIBLE | CWP_SKIPDISABLED);
    if (child != nullptr && child != window)
        MapWindowPoints(window, child, &place, 1);
    Tap(child != nullptr ? child : window, place);
}

struct Button {
    HWND window;
    RECT place; // in its parent's client area
};

// From left to right.
std::vector<Button> BottomButtons(HWND window)
{
    std::vector<Button> buttons;
    RECT client{};
    GetClientRect(window, &client);
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        WCHAR name[16] = {};
        GetClassNameW(child, name, 16);
        RECT place{};
        GetWindowRect(child, &place);
        MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
        if (IsWindowVisible(child) && lstrcmpiW(name, L"Button") == 0 &&
            (place.top + place.bottom) / 2 >= client.bottom - kBottomEdgePx * Scale())
            buttons.push_back({ child, place });
    }
    std::ranges::sort(buttons, {}, [](const Button& button) { return button.place.left; });
    return buttons;
}

void TapBottomButton(HWND window, std::size_t index)
{
    const auto buttons = BottomButtons(window);
    if (index >= buttons.size() || !IsWindowEnabled(buttons[index].window))
        return;
    const RECT& place = buttons[index].place;
    Tap(buttons[index].window, { (place.right - place.left) / 2, (place.bottom - place.top) / 2 });
}

} // namespace

void SetDesktopKeys(const DesktopKeys& keys)
{
    g_keys = keys;
}

void TurnIntoDeviceInput(MSG& message)
{
    const bool isDown = message.message == WM_KEYDOWN;
    if (!IsSetUp() || (!isDown && message.message != WM_KEYUP) || TurnIntoDeviceKey(message) || !isDown ||
        TurnIntoCommand(message))
        return;
    const HWND active = GetActiveWindow();
    if (const TapKey* const tap = FindKey(message.wParam, g_keys.taps)) {
        if (active != nullptr && !IsMainWindow(active))
            TapAt(active, tap->place);
    } else if (message.wParam >= VK_F1 && message.wParam <= kLastButtonKey && !IsHeld(message)) {
        TapBottomButton(active, message.wParam - VK_F1);
    }
}

void GiveCommand(WORD command)
{
    if (Takes(ScreenWindow(), command))
        PostMessageW(ScreenWindow(), WM_COMMAND, command, 0);
}

} // namespace cardsong::screen
