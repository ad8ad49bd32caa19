// Where the device's file system lies on this machine, and the settings that the host gives the layer.
#pragma once

#include "platform/linux/ce/types.h"

#include <optional>
#include <string>
#include <string_view>

namespace cardsong::kernel {

struct DeviceTree {
    std::string userDirectory;   // writable; "\Windows\x" is <user>/Windows/x laid over <system>/Windows/x
    std::string systemDirectory; // installed, read only; may be empty
    std::string cardDirectory;   // "\SDMMC"; empty or absent: no card
    LANGID uiLanguage = 0x0404;
    bool debugOutput = false; // NKDbgPrintfW writes to standard error
};

// Puts `tree` in force for every later call. Call it before the first file call, or between tests.
void InstallDeviceTree(const DeviceTree& tree);
const DeviceTree& CurrentDeviceTree();

// The host path of an existing file or folder named by a device path ("\Windows\a.gif", "SDMMC\b.mp3"), letters
// compared without case; nothing when there is none. Bytes that are not UTF-8 survive the way through device paths and
// back.
std::optional<std::string> FindHostPath(std::u16string_view devicePath);

// The instance whose resources are the program's own ("\Windows\cardsong.resources.dll"); never null.
HINSTANCE ProgramInstance();

} // namespace cardsong::kernel
