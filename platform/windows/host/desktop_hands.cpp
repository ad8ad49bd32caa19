#include "platform/windows/host/desktop_hands.h"

#include "platform/windows/screen/desktop_keyboard.h"
#include "platform/windows/screen/device_screen.h"
#include "platform/windows/screen/screenshot.h"
#include "platform/windows/screen/window_procedures.h"

#include <chrono>

namespace cardsong::host {
namespace {

constexpr DWORD kPatienceMs = 10'000; // for the player's first window
constexpr DWORD kStepMs = 10;

void AwaitScreenWindow()
{
    for (DWORD waited = 0; screen::ScreenWindow() == nullptr && waited < kPatienceMs; waited += kStepMs)
        Sleep(kStepMs);
}

struct Target {
    HWND window;
    LPARAM place;
};

struct Search {
    POINT onDesktop;
    HWND found;
};

// From the topmost window down.
BOOL CALLBACK LookAtWindow(HWND window, LPARAM parameter)
{
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    RECT place{};
    if (process != GetCurrentProcessId() || !IsWindowVisible(window) || !IsWindowEnabled(window) ||
        !GetWindowRect(window, &place) || !PtInRect(&place, search.onDesktop))
        return TRUE;
    search.found = window;
    return FALSE;
}

// The innermost window under a point of the desktop that would get a click there.
Target WindowUnder(POINT onDesktop)
{
    Search search{ onDesktop, screen::ScreenWindow() };
    EnumWindows(LookAtWindow, reinterpret_cast<LPARAM>(&search));
    HWND window = search.found;
    for (;;) {
        POINT place = onDesktop;
        ScreenToClient(window, &place);
        const HWND child = ChildWindowFromPointEx(window, place, CWP_SKIPINVISIBLE | CWP_SKIPDISABLED);
        if (child == nullptr || child == window)
            return { window, MAKELPARAM(place.x, place.y) };
        window = child;
    }
}

} // namespace

void DesktopHands::Press(UINT key)
{
    AwaitScreenWindow();
    screen::PressKey(key);
}

void DesktopHands::Command(WORD command)
{
    AwaitScreenWindow();
    screen::GiveCommand(command);
}

void DesktopHands::Tap(int x, int y)
{
    AwaitScreenWindow();
    const Target target = WindowUnder(screen::ToDesktop({ x, y }));
    PostMessageW(target.window, WM_LBUTTONDOWN, MK_LBUTTON, target.place);
    PostMessageW(target.window, WM_LBUTTONUP, 0, target.place);
}

bool DesktopHands::Shoot(const std::string& path)
{
    return screen::SaveScreenshot(path);
}

void DesktopHands::Wait(std::unique_lock<std::mutex>& lock, std::condition_variable& changed,
                        std::uint32_t milliseconds, const std::function<bool()>& ended)
{
    changed.wait_for(lock, std::chrono::milliseconds(milliseconds), ended);
}

} // namespace cardsong::host
