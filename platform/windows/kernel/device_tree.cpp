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
    SetErrorMode(GetErrorMode() | SEM_FAILCRITICALERRORS); // no box asks for the medium of an empty drive
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
