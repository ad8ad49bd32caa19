#include "platform/device_visit.h"

#include "platform/device_tree.h"
#include "platform/linux/bus/device_neighbours.h"
#include "platform/linux/host/user_defaults.h"

namespace cardsong::host {
namespace {

constexpr std::chrono::milliseconds kPostingLimit{ 1000 };

} // namespace

struct DeviceVisit::Means {
    std::shared_ptr<bus::DeviceNeighbours> neighbours;
};

std::string UsualDeviceDirectory()
{
    return UserDefaults().deviceDirectory;
}

DeviceVisit::DeviceVisit(const std::string& deviceDirectory)
    : m_means(std::make_unique<Means>(Means{ std::make_shared<bus::DeviceNeighbours>(deviceDirectory) }))
{
    kernel::DeviceTree tree;
    tree.userDirectory = deviceDirectory;
    kernel::InstallDeviceTree(tree);
    m_means->neighbours->Join(bus::SessionBusAddress());
    user::InstallOtherPrograms(m_means->neighbours);
}

DeviceVisit::~DeviceVisit()
{
    user::InstallOtherPrograms(nullptr);
}

bool DeviceVisit::FinishPosting()
{
    return m_means->neighbours->Flush(kPostingLimit);
}

} // namespace cardsong::host
