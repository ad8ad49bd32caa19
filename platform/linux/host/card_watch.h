// Watches the card's folder while the player runs, and tells when the card goes and when it comes.
#pragma once

#include "platform/linux/host/card_folder.h"

#include <functional>
#include <string>
#include <thread>

namespace cardsong::host {

enum class CardChange { Gone, Come };

class CardWatch {
public:
    CardWatch() = default;
    ~CardWatch();
    CardWatch(const CardWatch&) = delete;
    CardWatch& operator=(const CardWatch&) = delete;

    // Looks whether the card is there, and watches from now on, on a thread of its own that sleeps while nothing
    // happens. `folder`: the card's host folder, of which there need be none yet; empty: nothing is watched. `tell`
    // runs on that thread and may wait.
    void Start(const std::string& folder, std::function<void(CardChange)> tell);
    // Watches no longer; waits for a `tell` that runs. Harmless when it never started.
    void Stop();

private:
    void Watch(const std::string& folder, std::optional<CardIdentity> card,
               const std::function<void(CardChange)>& tell) const;

    int m_alarm = -1; // an eventfd: the thread is to end
    std::thread m_thread;
};

} // namespace cardsong::host
