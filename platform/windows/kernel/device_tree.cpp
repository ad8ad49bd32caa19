#include "platform/device_tree.h"

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
    return std::atomic_ref(kernel::TheTree().uiLanguage);
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
