// The hands of a script on this system: they press where the display would.
#pragma once

#include "platform/host/script_player.h"

namespace cardsong::display {

// Waits are taken from the clock in force.
class DeviceHands final : public host::InputHands {
public:
    explicit DeviceHands(LPCWSTR mainWindowClass) : m_mainWindowClass(mainWindowClass) {}
    void Press(UINT key) override;
    void Command(WORD command) override;
    void Tap(int x, int y) override;
    bool Shoot(const std::string& path) override;
    void Wait(std::unique_lock<std::mutex>& lock, std::condition_variable& changed, std::uint32_t milliseconds,
              const std::function<bool()>& ended) override;

private:
    const LPCWSTR m_mainWindowClass; // gets the commands
};

} // namespace cardsong::display
