// The system itself finds the player's window and posts to it; the registry is that of the player's device folder.
#include "platform/device_visit.h"

#include "platform/device_tree.h"
#include "platform/windows/host/user_defaults.h"
#include "platform/windows/host/whole_path.h"

namespace cardsong::host {

struct DeviceVisit::Means {};

std::string UsualDeviceDirectory()
{
    return UserDefaults().deviceDirectory;
}

std::string DeviceOfPlayer(const std::string& deviceDirectory)
{
    return deviceDirectory; // a player of named songs is not known here
}

DeviceVisit::DeviceVisit(const std::string& deviceDirectory)
{
    kernel::DeviceTree tree;
    tree.userDirectory = WholePath(deviceDirectory);
    kernel::InstallDeviceTree(tree);
}

DeviceVisit::~DeviceVisit() = default;

bool DeviceVisit::FinishPosting()
{
    return true;
}

} // namespace cardsong::host
