#include "platform/linux/display/device_hands.h"

#include "platform/linux/display/screenshot.h"
#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/input.h"

namespace cardsong::display {

void DeviceHands::Press(UINT key)
{
    user::KeyDown(key);
    user::KeyUp(key);
}

void DeviceHands::Command(WORD command)
{
    user::GiveCommand(m_mainWindowClass, command);
}

void DeviceHands::Tap(int x, int y)
{
    user::PointerDown({ x, y });
    user::PointerUp({ x, y });
}

bool DeviceHands::Shoot(const std::string& path)
{
    return SaveScreenshot(path);
}

void DeviceHands::Wait(std::unique_lock<std::mutex>& lock, std::condition_variable& changed, std::uint32_t milliseconds,
                       const std::function<bool()>& ended)
{
    kernel::Clock& clock = kernel::CurrentClock();
    clock.WaitUntil(lock, changed, clock.NowMs() + milliseconds, ended);
}

} // namespace cardsong::display
