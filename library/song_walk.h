// Walks a folder tree of the device from song to song. It keeps no list and reads no song.
#pragma once

#include "library/song_format.h"
#include "platform/ce.h"

#include <cstdint>
#include <functional>

// A song as its folder tells it; the texts live until the visitor returns.
struct FoundSong {
    WStringView folder; // without a trailing backslash
    WStringView name;   // in the folder's own letters
    std::uint32_t fileSize;
    SongFormat format;
};

enum class Subfolders { Walk, LeaveOut };

// Asked before each file and folder; false ends the walk.
using WalkGoesOn = std::function<bool()>;

// Calls `visit` for each ".mp3" and ".wma" file of `folder`, and of the folders below it if they are walked, in the
// order in which the file system tells them. Without a visitor only folders are walked. The card's map folders are left
// alone. A folder that links lead to is walked once. A folder that cannot be read adds nothing, and a card that is
// pulled meanwhile ends the walk. Paths of 260 units and more are left out. `goesOn`: none walks to the end.
void WalkSongs(WStringView folder, Subfolders subfolders, const std::function<void(const FoundSong&)>& visit,
               const WalkGoesOn& goesOn = nullptr);
