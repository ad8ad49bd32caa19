#include "platform/linux/host/device_membership.h"

#include "platform/desktop_keys.h"
#include "platform/linux/bus/device_neighbours.h"
#include "platform/linux/host/device_players.h"

namespace cardsong::host {
namespace {

constexpr std::chrono::milliseconds kLastWordsLimit{ 60 };

} // namespace

DeviceMembership::DeviceMembership(const std::string& deviceDirectory)
    : m_neighbours(std::make_shared<bus::DeviceNeighbours>(deviceDirectory)),
      m_isSecond(m_neighbours->Claim(kPlayerClass, ProgramDesktopKeys().exitCommand) == bus::ClaimResult::Others)
{
}

DeviceMembership::~DeviceMembership()
{
    static_cast<void>(m_neighbours->Flush(kLastWordsLimit)); // without a bus nobody hears them
    user::InstallOtherPrograms(nullptr);
}

void DeviceMembership::Join()
{
    m_neighbours->Join(bus::SessionBusAddress());
    user::InstallOtherPrograms(m_neighbours);
}

void DeviceMembership::LetNextStart()
{
    m_neighbours->ReleaseClaim();
}

bool DeviceMembership::FinishPosting(std::chrono::milliseconds limit)
{
    return m_neighbours->Flush(limit);
}

} // namespace cardsong::host
