#include "platform/linux/host/card_folder.h"

#include <sys/stat.h>

#include <filesystem>

namespace cardsong::host {
namespace {

bool IsMountedOn(const std::string& folder, const struct stat& status)
{
    struct stat above = {};
    return stat((folder + "/..").c_str(), &above) == 0 && above.st_dev != status.st_dev;
}

bool HoldsAnything(const std::string& folder)
{
    std::error_code error;
    return std::filesystem::directory_iterator(folder, error) != std::filesystem::directory_iterator();
}

} // namespace

std::optional<CardIdentity> FindCard(const std::string& folder, const std::optional<CardIdentity>& known)
{
    struct stat status = {};
    if (stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
        return std::nullopt;
    const CardIdentity found{ status.st_dev, status.st_ino };
    if (found == known || IsMountedOn(folder, status) || HoldsAnything(folder))
        return found;
    return std::nullopt;
}

} // namespace cardsong::host
