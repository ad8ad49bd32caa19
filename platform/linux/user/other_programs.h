// The device's other programs, each a process with windows of its own, as a room above this one reaches them. This room
// decides which messages cross over; it knows no bus.
#pragma once

#include "platform/linux/ce/types.h"

#include <memory>
#include <string>
#include <string_view>

namespace cardsong::user {

struct CrossingMessage {
    std::u16string windowClass; // of the window that it is for; empty: every top-level window
    std::u16string name;        // of a registered message; empty: WM_COMMAND, which is for one window
    WPARAM wParam = 0;
    LPARAM lParam = 0; // 0 with a command: no pointer crosses over

    bool operator==(const CrossingMessage&) const = default;
};

// Every call may come from any thread, and comes without a lock of this room.
class OtherPrograms {
public:
    virtual ~OtherPrograms() = default;
    // Whether one of them has a top-level window of that class now. May look at files.
    [[nodiscard]] virtual bool HaveWindow(std::u16string_view className) = 0;
    // Returns at once, and nobody hears whether the message arrived.
    virtual void Send(CrossingMessage message) = 0;
};

// Null: there are none, which is so until a host says otherwise.
void InstallOtherPrograms(std::shared_ptr<OtherPrograms> programs);

// Posts what another program has sent. Any thread. Dropped are messages that nobody has registered here, those for a
// window that is not there, and those for a thread that has left many messages waiting.
void PostFromOtherProgram(const CrossingMessage& message);

} // namespace cardsong::user
