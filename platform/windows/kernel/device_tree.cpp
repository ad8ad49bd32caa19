#include "platform/device_tree.h"

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
    SetErrorMode(GetErrorMode() | SEM_FAILCRITICALERRORS); // a drive without a medium is no card, and no question
    TheTree() = tree;
}

const DeviceTree& CurrentDeviceTree()
{
    return TheTree();
}

HINSTANCE ProgramInstance()
{
    return GetModuleHandleW(nullptr);
}

} // namespace cardsong::kernel

LANGID cardsong::device::GetUserDefaultUILanguage()
{
    return kernel::CurrentDeviceTree().uiLanguage;
}
