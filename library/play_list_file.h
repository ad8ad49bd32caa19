// Keeps the play list over restarts in "\Windows\play_list.txt". It knows the form of the file; what is played is not
// its business.
#pragma once

#include "containers/ptr_list_ctrl.h"

#include "platform/ce.h"

// UTF-16 little-endian without a byte-order mark, a record for each song: its 1-based number, file name, folder and
// whole seconds, parted by "$" and ended by the two bytes 0D 0A, which make the one unit 0x0A0D.
inline constexpr const WCHAR* kPlayListFile = TEXT("\\Windows\\play_list.txt");

// Writes the MediaFileEntry* of `list`, as far as the first null. An entry without a file name is left out and keeps
// its number. Failures are not reported; the file is then the old one, as it was.
void SavePlayList(const CPtrListCtrl& list);

// Appends a new entry for each record whose file is there; a missing file holds none. A last record without its end
// counts.
void LoadPlayList(CPtrListCtrl& list);

// One record, without its end or up to it; at most 1000 units count. 1 when its file is there and a new entry was
// appended, else 0.
int ParsePlayListRecord(WStringView text, CPtrListCtrl& list);
