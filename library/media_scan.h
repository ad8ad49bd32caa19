// Finds the songs of the card: walks a folder tree, takes ".mp3" and ".wma" files, leaves navigation maps alone.
#pragma once

#include "library/media_entry.h"
#include "library/song_walk.h"

// How many matching files the scans have met, whether added or not.
extern std::uint32_t ScannedFileCount;

// Appends to `list` a new entry for each song below `folder` whose name is in neither PlayList nor CardSongList, in the
// order in which the file system tells them. Null folder: nothing happens; null list: folders are walked, files
// ignored. A folder that cannot be read adds nothing. Paths of 260 units and more are left out. `goesOn`: as for
// WalkSongs; it leaves PlayList and CardSongList alone.
void ScanMediaFolder(const WCHAR* folder, CPtrListCtrl* list, bool recurse, const WalkGoesOn& goesOn = nullptr);
