// A program beside the player, on the same device: it finds the player's window, posts to it, and sees the registry.
// For programs of the console; the player itself is no visitor.
#pragma once

#include <memory>
#include <string>

namespace cardsong::host {

// The folder that keeps the device's files when nobody names one. UTF-8 on Windows, the system's own bytes elsewhere.
[[nodiscard]] std::string UsualDeviceDirectory();

// The folder of the device that the user's player runs on now: of songs that were named, when such a player runs, else
// `deviceDirectory` itself.
[[nodiscard]] std::string DeviceOfPlayer(const std::string& deviceDirectory);

class DeviceVisit {
public:
    // Lays out the device and joins its programs, for as long as the object lives. One at a time.
    explicit DeviceVisit(const std::string& deviceDirectory);
    ~DeviceVisit();
    DeviceVisit(const DeviceVisit&) = delete;
    DeviceVisit& operator=(const DeviceVisit&) = delete;

    // Waits until what was posted to other programs is on its way, a second at most. False when it is not: there is no
    // way to them.
    [[nodiscard]] bool FinishPosting();

private:
    struct Means;
    const std::unique_ptr<Means> m_means;
};

} // namespace cardsong::host
