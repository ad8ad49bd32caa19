#include "platform/linux/host/device_players.h"

#include "platform/device_visit.h"
#include "platform/linux/bus/class_lock.h"

namespace cardsong::host {

std::string FolderOfOpenedSongs(const std::string& deviceDirectory)
{
    return deviceDirectory + "/.cardsong-opened";
}

std::string DeviceOfOpenedSongs(const std::string& deviceDirectory)
{
    return FolderOfOpenedSongs(deviceDirectory) + "/Device";
}

bool IsPlayerOn(const std::string& deviceDirectory)
{
    return bus::ClassLock::IsTaken(deviceDirectory, kPlayerClass);
}

std::string DeviceOfPlayer(const std::string& deviceDirectory)
{
    std::string opened = DeviceOfOpenedSongs(deviceDirectory);
    return IsPlayerOn(opened) ? opened : deviceDirectory;
}

} // namespace cardsong::host
