#include "platform/linux/host/start_turn.h"

#include <thread>

namespace cardsong::host {
namespace {

constexpr std::u16string_view kLockName = u"starting";
constexpr std::chrono::milliseconds kLook{ 5 };

} // namespace

StartTurn::StartTurn(const std::string& deviceDirectory) : m_lock(deviceDirectory, kLockName) {}

bool StartTurn::Await(std::chrono::milliseconds limit)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    while (m_lock.Claim() == bus::ClaimResult::Others) {
        if (std::chrono::steady_clock::now() >= end)
            return false;
        std::this_thread::sleep_for(kLook);
    }
    return true;
}

} // namespace cardsong::host
