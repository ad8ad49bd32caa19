// Where the device's file system lies on this machine, and the settings that a host gives the layer. For hosts, media
// engines and tests; the player itself sees only platform/ce.h.
#pragma once

#include "platform/ce.h"

#include <optional>
#include <string>

namespace cardsong::kernel {

// A path as this machine's own file functions take it.
#ifdef _WIN32
using HostPath = std::wstring;
#else
using HostPath = std::string;
#endif

// Folders are UTF-8, without a trailing separator.
struct DeviceTree {
    std::string userDirectory;   // writable; "\Windows\x" is <user>/Windows/x, else <skin>/x, else <system>/Windows/x
    std::string skinDirectory;   // read only; empty: the installed skin
    std::string systemDirectory; // installed, read only; may be empty
    std::string cardDirectory;   // "\SDMMC"; empty or absent: no card
    LANGID uiLanguage = 0x0404;  // until SetUserDefaultUILanguage
    bool debugOutput = false;    // NKDbgPrintfW writes to standard error
};

// Puts `tree` in force for every later call. Call it before the first file call, or between tests.
void InstallDeviceTree(const DeviceTree& tree);
const DeviceTree& CurrentDeviceTree();

// The host path of an existing file or folder named by a device path ("\Windows\a.gif", "SDMMC\b.mp3"), letters
// compared without case; nothing when there is none. Names that are not valid text on the host survive the way through
// device paths and back.
std::optional<HostPath> FindHostPath(WStringView devicePath);

// The instance whose resources are the program's own; never null.
HINSTANCE ProgramInstance();

} // namespace cardsong::kernel
