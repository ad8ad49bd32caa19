#include "platform/linux/bus/device_neighbours.h"

#include "platform/console_notice.h"
#include "platform/linux/bus/message_budget.h"
#include "platform/linux/kernel/clock.h"
#include "platform/linux/kernel/host_files.h"
#include "platform/linux/kernel/unicode.h"
#include "platform/linux/user/input.h"

namespace cardsong::bus {
namespace {

// Passes on what the bus brings, as much as the program can bear.
class Inbox {
public:
    Inbox(std::u16string ownClass, WORD exitCommand) : m_ownClass(std::move(ownClass)), m_exitCommand(exitCommand) {}

    void Take(const user::CrossingMessage& message)
    {
        if (!m_budget.Take(kernel::CurrentClock().NowMs()))
            return;
        if (AsksToExit(message))
            user::PressExitKey();
        else
            user::PostFromOtherProgram(message);
    }

private:
    bool AsksToExit(const user::CrossingMessage& message) const
    {
        return m_exitCommand != 0 && message.name.empty() && message.wParam == m_exitCommand && message.lParam == 0 &&
               kernel::EqualIgnoringCase(message.windowClass, m_ownClass);
    }

    const std::u16string m_ownClass;
    const WORD m_exitCommand;
    MessageBudget m_budget;
};

void TellThatTheProgramIsAlone()
{
    kernel::TellOnce("no message bus: other programs cannot reach this one");
}

} // namespace

DeviceNeighbours::DeviceNeighbours(std::string folder) : m_folder(std::move(folder)) {}

ClaimResult DeviceNeighbours::Claim(std::u16string_view className, WORD exitCommand)
{
    m_claimedClass = kernel::ToLower(className);
    m_exitCommand = exitCommand;
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
    auto inbox = std::make_shared<Inbox>(m_claimedClass, m_exitCommand);
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
