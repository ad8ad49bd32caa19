#include "platform/linux/bus/device_neighbours.h"

#include "platform/console_notice.h"
#include "platform/linux/bus/message_budget.h"
#include "platform/linux/kernel/clock.h"
#include "platform/linux/kernel/host_files.h"
#include "platform/linux/kernel/unicode.h"

namespace cardsong::bus {
namespace {

// Passes on what the bus brings, as much as the program can bear.
class Inbox {
public:
    void Take(const user::CrossingMessage& message)
    {
        if (m_budget.Take(kernel::CurrentClock().NowMs()))
            user::PostFromOtherProgram(message);
    }

private:
    MessageBudget m_budget;
};

void TellThatTheProgramIsAlone()
{
    kernel::TellOnce("no message bus: other programs cannot reach this one");
}

} // namespace

DeviceNeighbours::DeviceNeighbours(std::string folder) : m_folder(std::move(folder)) {}

ClaimResult DeviceNeighbours::Claim(std::u16string_view className)
{
    m_claimedClass = kernel::ToLower(className);
    m_lock.emplace(m_folder, className);
    m_claim = m_lock->Claim();
    return m_claim;
}

void DeviceNeighbours::ReleaseClaim()
{
    m_lock.reset();
}

void DeviceNeighbours::Join(const std::string& busAddress)
{
    const std::string device = IdentityOfFolder(m_folder);
    auto inbox = std::make_shared<Inbox>();
    m_bus.emplace(device.empty() ? std::string() : busAddress, device,
                  SessionBus::Callbacks{ [inbox](const user::CrossingMessage& message) { inbox->Take(message); },
                                         m_claim == ClaimResult::Others ? [] {} : TellThatTheProgramIsAlone });
}

bool DeviceNeighbours::Flush(std::chrono::milliseconds limit)
{
    return m_bus && m_bus->Flush(limit);
}

bool DeviceNeighbours::HaveWindow(std::u16string_view className)
{
    if (!m_claimedClass.empty() && kernel::EqualIgnoringCase(className, m_claimedClass))
        return m_claim == ClaimResult::Others;
    return ClassLock::IsTaken(m_folder, className);
}

void DeviceNeighbours::Send(user::CrossingMessage message)
{
    if (m_bus)
        m_bus->Send(std::move(message));
}

std::string IdentityOfFolder(const std::string& folder)
{
    const auto facts = kernel::ReadHostFacts(folder);
    if (!facts || !facts->IsFolder())
        return {};
    return std::to_string(facts->identity.device) + "-" + std::to_string(facts->identity.inode);
}

} // namespace cardsong::bus
