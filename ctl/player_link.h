// The way to a player that runs: finding it, posting to it, asking it. It knows no command line.
#pragma once

#include "common/player_status.h"
#include "platform/ce.h"
#include "platform/device_visit.h"

#include <optional>
#include <string>

class PlayerLink {
public:
    // `deviceDirectory`: of the user; empty: the usual one. A player of songs that were named is found there, too.
    explicit PlayerLink(const std::string& deviceDirectory);

    // Of the player.
    const std::string& DeviceDirectory() const { return m_deviceDirectory; }
    [[nodiscard]] bool IsPlayerThere() const;
    // Each returns an empty text, or what went wrong in one line.
    [[nodiscard]] std::string PostCommand(WORD command);
    [[nodiscard]] std::string Broadcast(const WCHAR* message, WPARAM wParam);
    // Waits for the player's answer, a second at most.
    [[nodiscard]] std::string AskStatus(PlayerStatus& status);

private:
    std::string Finish();

    const std::string m_deviceDirectory;
    cardsong::host::DeviceVisit m_visit;
};
