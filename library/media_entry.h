// One song of the play list or the library, and the two process-wide lists of them. It knows no file.
#pragma once

#include "containers/ptr_list_ctrl.h"
#include "library/file_names.h"

#include "platform/ce.h"

#include <cstdint>
#include <memory>

struct MediaFileEntry {
    PathBuffer fileName = {}; // lower case when the scan found it
    PathBuffer folder = {};   // without a trailing backslash
    std::uint32_t fileSize = 0;
    std::int32_t isChecked = 0;       // 1 when ticked in the library window
    std::int32_t playMark = 0;        // the entry's own 1-based position while it is the current one
    double duration = 0;              // seconds: whole from a scan or a play list, with a fraction from the player
    std::int32_t playedInShuffle = 0; // 1 when played since shuffle was switched on
};

// Lists of MediaFileEntry*, to be seen through library/song_list.h. They own their entries: who empties a list frees
// them. Used by one thread, the user interface's.
extern CPtrListCtrl PlayList;     // the songs of the play list, in play order
extern CPtrListCtrl CardSongList; // the songs of the card that are not in the play list

// A new entry, all other fields zero. Null when a text does not fit its field or the path of both is out of reach.
std::unique_ptr<MediaFileEntry> NewMediaEntry(WStringView fileName, WStringView folder);

// The entry's path: folder, a backslash, file name.
WString PathOf(const MediaFileEntry& entry);
