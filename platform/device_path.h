// A device path ("\Windows\a.gif", "SDMMC\b.mp3") taken apart into its names. Knows no file system.
#pragma once

#include "platform/ce.h"

#include <vector>

namespace cardsong::kernel {

// The names of a device path from the root down. Empty names and "." are gone; ".." has taken its folder with it, and
// stops at the root.
struct DevicePath {
    std::vector<WString> names;
    bool endsInSeparator = false;

    bool IsRoot() const { return names.empty(); }
    DevicePath Parent() const;
    // With every name as a file system keeps it: without the dots and blanks at its end. A name of nothing else stays.
    DevicePath Trimmed() const;
};
DevicePath ParseDevicePath(WStringView text);

// Whether a file can be made by this name: no separator, wildcard, colon or control character, and more than dots and
// blanks.
bool IsFileName(WStringView name);
// Whether some name of the path holds a character that no file can be made with.
bool HasForeignName(const DevicePath& path);

// Whether `name` names a stream driver: three letters, a digit and a colon ("DSK3:").
bool IsDeviceName(WStringView name);

} // namespace cardsong::kernel
