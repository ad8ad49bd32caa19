// The user's D-Bus session bus, on a thread of its own: nobody else ever waits for it. Knows no window.
#pragma once

#include "platform/linux/user/other_programs.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace cardsong::bus {

// Where the environment says that the bus is; empty when it says nothing. Starts none.
[[nodiscard]] std::string SessionBusAddress();

class SessionBus {
public:
    // Each runs on one thread of the bus's, perhaps after the object is gone.
    struct Callbacks {
        std::function<void(const user::CrossingMessage&)> received; // from another program of the same device; quick
        std::function<void()> lost;                                 // once: there is no bus, or none any more
    };

    // Begins to connect, and returns. `device`: messages of programs with another one are not heard.
    SessionBus(const std::string& address, const std::string& device, Callbacks callbacks);
    // Waits a moment for the thread. One that a hung bus holds is left to the end of the process.
    ~SessionBus();
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;

    // Any thread, returns at once. While the connection is being made messages wait; when too many do, or the bus is
    // lost, this one is dropped.
    void Send(user::CrossingMessage message);
    // Waits until messages of others can arrive and everything that was sent is with the bus. False when something was
    // dropped, the bus is lost, or `limit` is over.
    [[nodiscard]] bool Flush(std::chrono::milliseconds limit);

private:
    class Connection;
    const std::shared_ptr<Connection> m_connection;
};

} // namespace cardsong::bus
