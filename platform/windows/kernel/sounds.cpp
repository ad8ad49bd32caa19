// Short sounds from files of the device.
#include "platform/device_tree.h"
#include "platform/windows/kernel/device_calls.h"

// A file that is missing or no sound is silence, not the system's own sound.
BOOL cardsong::device::PlaySoundW(LPCWSTR name, HMODULE module, DWORD flags)
{
    if (name == nullptr || (flags & SND_FILENAME) == 0)
        return ::PlaySoundW(name, module, flags);
    const auto path = kernel::FindHostPath(name);
    if (!path) {
        ::PlaySoundW(nullptr, nullptr, 0);
        SetLastError(ERROR_FILE_NOT_FOUND);
        return FALSE;
    }
    return ::PlaySoundW(path->c_str(), module, flags | SND_NODEFAULT);
}
