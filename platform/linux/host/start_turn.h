// One start at a time: from the look at who plays until the new player holds its device. Two that look at the same
// moment would both find nobody, or end and replace each other half made.
#pragma once

#include "platform/linux/bus/class_lock.h"

#include <chrono>
#include <string>

namespace cardsong::host {

class StartTurn {
public:
    // `deviceDirectory`: the user's, where the lock lies. What is made for named songs is replaced as a whole.
    explicit StartTurn(const std::string& deviceDirectory);

    // Waits while other starts have it. False when they keep it for `limit`. Where no lock can be had nobody waits.
    [[nodiscard]] bool Await(std::chrono::milliseconds limit = std::chrono::minutes(1));
    // The next start may look. The destructor does it, too.
    void End() { m_lock.Release(); }

private:
    bus::ClassLock m_lock;
};

} // namespace cardsong::host
