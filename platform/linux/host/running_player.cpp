#include "platform/linux/host/running_player.h"

#include "platform/desktop_keys.h"
#include "platform/device_visit.h"
#include "platform/linux/ce/messages.h"
#include "platform/linux/host/child_question.h"
#include "platform/linux/host/device_players.h"

#include <chrono>
#include <thread>

namespace cardsong::host {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kLimit{ 10'000 };
constexpr std::chrono::milliseconds kLimitWithoutBus{ 3000 }; // it may be about to end by itself
constexpr std::chrono::milliseconds kAskAgain{ 250 };
constexpr std::chrono::milliseconds kLook{ 5 };

// False when there is no way to the player.
bool GiveExitCommand(DeviceVisit& asVisitor)
{
    const DesktopKeys program = ProgramDesktopKeys();
    PostMessageW(FindWindowW(program.mainWindowClass, nullptr), WM_COMMAND, program.exitCommand, 0);
    return asVisitor.FinishPosting();
}

std::string AskUntilItEnds(const std::string& deviceDirectory)
{
    const auto start = Clock::now();
    DeviceVisit asVisitor(deviceDirectory);
    auto limit = kLimit;
    for (auto next = start; IsPlayerOn(deviceDirectory) && Clock::now() < start + limit;) {
        if (Clock::now() >= next) {
            if (!GiveExitCommand(asVisitor))
                limit = kLimitWithoutBus;
            next = Clock::now() + kAskAgain;
        }
        std::this_thread::sleep_for(kLook);
    }
    return {};
}

} // namespace

bool EndPlayerOn(const std::string& deviceDirectory)
{
    if (!IsPlayerOn(deviceDirectory))
        return true;
    // In a process of its own, since a visit starts threads. How it went shows at the lock.
    static_cast<void>(ChildQuestion([&] { return AskUntilItEnds(deviceDirectory); }, kLimit).Await());
    return !IsPlayerOn(deviceDirectory);
}

} // namespace cardsong::host
