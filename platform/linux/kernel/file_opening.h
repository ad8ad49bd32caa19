// Opens a host file for a device path the way CreateFileW promises: dispositions, the user's copy of an installed file,
// nothing that is not an ordinary file. Knows no handle.
#pragma once

#include "platform/linux/ce/kernel.h"

#include <string_view>

namespace cardsong::kernel {

struct OpenedFile {
    int descriptor = -1; // owned by the caller; -1 when it failed, with `error` set
    bool existed = false;
    DWORD error = ERROR_SUCCESS;
    bool losesContents = false; // the caller still has to truncate it
};

// `access`: GENERIC_READ, GENERIC_WRITE, both or 0. `disposition`: CREATE_NEW to TRUNCATE_EXISTING. An existing file
// that is to lose its contents is left for the caller to truncate, who first looks whether it is in use.
OpenedFile OpenDeviceFile(std::u16string_view devicePath, DWORD access, DWORD disposition, DWORD attributes);

} // namespace cardsong::kernel
