// The player among the programs of its device: one player at a time, and messages from and to the others.
#pragma once

#include <chrono>
#include <memory>
#include <string>

namespace cardsong::bus {
class DeviceNeighbours;
}

namespace cardsong::host {

class DeviceMembership {
public:
    // Takes the device, if no other player has it. `deviceDirectory`: made when it is missing.
    explicit DeviceMembership(const std::string& deviceDirectory);
    // Gives the last messages a moment to get away.
    ~DeviceMembership();
    DeviceMembership(const DeviceMembership&) = delete;
    DeviceMembership& operator=(const DeviceMembership&) = delete;

    // Begins to speak and to listen, on a thread of its own; returns at once. What must be done before other threads
    // run is done before.
    void Join();
    // Whether another player has the device. This one then finds the other's window, and is to end.
    [[nodiscard]] bool IsSecond() const { return m_isSecond; }
    // The player has ended; what is left of the program is not in the way of the next one.
    void LetNextStart();
    // Waits until what was posted to other programs is on its way. False when it is not after `limit`.
    [[nodiscard]] bool FinishPosting(std::chrono::milliseconds limit);

private:
    const std::shared_ptr<bus::DeviceNeighbours> m_neighbours;
    const bool m_isSecond;
};

} // namespace cardsong::host
