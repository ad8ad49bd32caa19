// The players of one user's device: of the device itself, and of songs that were named. One of them runs at a time.
#pragma once

#include "platform/linux/ce/types.h"

#include <string>

namespace cardsong::host {

inline constexpr const WCHAR* kPlayerClass = u"AUDIOPLAYER"; // of which a device has one window

// The folder in the user's device that holds what is made for named songs: no name of a folder that a user has.
[[nodiscard]] std::string FolderOfOpenedSongs(const std::string& deviceDirectory);
// The device in it, on which their player runs.
[[nodiscard]] std::string DeviceOfOpenedSongs(const std::string& deviceDirectory);

// Whether a player runs whose device's folder this is. Takes nothing and makes nothing.
[[nodiscard]] bool IsPlayerOn(const std::string& deviceDirectory);

} // namespace cardsong::host
