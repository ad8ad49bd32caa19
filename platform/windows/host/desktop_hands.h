// The hands of a script on a desktop: they post what a finger and a key would cause, so that it does not matter which
// program has the focus.
#pragma once

#include "platform/host/script_player.h"

namespace cardsong::host {

class DesktopHands final : public InputHands {
public:
    void Press(UINT key) override;
    void Command(WORD command) override;
    void Tap(int x, int y) override;
    bool Shoot(const std::string& path) override;
    void Wait(std::unique_lock<std::mutex>& lock, std::condition_variable& changed, std::uint32_t milliseconds,
              const std::function<bool()>& ended) override;
};

} // namespace cardsong::host
