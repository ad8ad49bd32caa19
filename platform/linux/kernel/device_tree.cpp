#include "platform/device_tree.h"

#include "platform/linux/kernel/device_paths.h"
#include "platform/linux/kernel/resource_modules.h"

#include <atomic>

namespace cardsong::kernel {
namespace {

DeviceTree& TheTree()
{
    static auto* const s_tree = new DeviceTree;
    return *s_tree;
}

} // namespace

void InstallDeviceTree(const DeviceTree& tree)
{
    TheTree() = tree;
    ForgetProgramResources();
}

const DeviceTree& CurrentDeviceTree()
{
    return TheTree();
}

std::optional<std::string> FindHostPath(std::u16string_view devicePath)
{
    const auto path = ParseDevicePath(devicePath);
    auto found = FindOnHost(path);
    if (devicePath.empty() || !found.Found() || (path.endsInSeparator && HostFoldersOf(path).empty()))
        return std::nullopt;
    return std::move(found.hostPath);
}

} // namespace cardsong::kernel

LANGID GetUserDefaultUILanguage()
{
    return std::atomic_ref(cardsong::kernel::TheTree().uiLanguage);
}

BOOL SetUserDefaultUILanguage(LANGID language)
{
    if (language == 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    std::atomic_ref(cardsong::kernel::TheTree().uiLanguage) = language; // alerts read it on threads of their own
    return TRUE;
}
