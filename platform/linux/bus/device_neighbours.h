// The device's other programs, reached by locks on files of its folder and messages over the session bus.
#pragma once

#include "platform/linux/bus/class_lock.h"
#include "platform/linux/bus/session_bus.h"
#include "platform/linux/user/other_programs.h"

#include <chrono>
#include <optional>
#include <string>

namespace cardsong::bus {

class DeviceNeighbours final : public user::OtherPrograms {
public:
    // `folder`: the device's, on the host.
    explicit DeviceNeighbours(std::string folder);

    // Takes the window class for this program: no other program of the device has such a window then. Once, before
    // Join. When another has it, HaveWindow says so from then on: this program is to leave it at that. `exitCommand`,
    // if not 0: given to that window by another program it acts as the exit key does, whatever stands in front of the
    // window, and before there is one.
    [[nodiscard]] ClaimResult Claim(std::u16string_view className, WORD exitCommand = 0);
    // Gives the class back, before the process ends.
    void ReleaseClaim();
    // Begins to send and to listen. Returns at once. Without a bus the program is alone, and only the debug output
    // hears of it.
    void Join(const std::string& busAddress);
    // See SessionBus::Flush. False before Join.
    [[nodiscard]] bool Flush(std::chrono::milliseconds limit);

    bool HaveWindow(std::u16string_view className) override;
    void Send(user::CrossingMessage message) override;

private:
    const std::string m_folder;
    std::u16string m_claimedClass; // in small letters
    WORD m_exitCommand = 0;
    ClaimResult m_claim = ClaimResult::Unlocked;
    std::optional<ClassLock> m_lock;
    std::optional<SessionBus> m_bus;
};

// Which folder it is, whatever its path: the programs of one device share it. Empty when there is no such folder.
[[nodiscard]] std::string IdentityOfFolder(const std::string& folder);

} // namespace cardsong::bus
