// The form of "\Windows\play_list.txt", which keeps the play list over restarts. Which of the file's songs are kept is
// the business of library/saved_play_list.h.
#pragma once

#include "library/media_entry.h"

#include <functional>
#include <memory>
#include <vector>

// UTF-16 little-endian without a byte-order mark, a record for each song: its 1-based number, file name, folder and
// whole seconds, parted by "$" and ended by the two bytes 0D 0A, which make the one unit 0x0A0D.
inline constexpr const WCHAR* kPlayListFile = TEXT("\\Windows\\play_list.txt");

// Writes the MediaFileEntry* of `list`, as far as the first null. An entry without a file name is left out and keeps
// its number. Failures are not reported; the file is then the old one, as it was.
void SavePlayList(const CPtrListCtrl& list);

// Writes the lists one behind the other, each numbered from 1.
void SavePlayLists(const std::vector<const CPtrListCtrl*>& lists);

// One record without its end, as it is written.
WString PlayListRecordText(std::int32_t number, const MediaFileEntry& entry);

// Appends a new entry for each record whose file is there; a missing file holds none. A last record without its end
// counts.
void LoadPlayList(CPtrListCtrl& list);

// Calls `visit` with each record in the order of the file, without its end; a missing file holds none.
void ReadPlayListRecords(const std::function<void(WStringView record)>& visit);

// The entry that a record names, whether its file is there or not; null when it names none. `number`, if not null, gets
// the record's number.
std::unique_ptr<MediaFileEntry> ReadPlayListRecord(WStringView text, std::int32_t* number);

// One record, without its end or up to it; at most 1000 units count. 1 when its file is there and a new entry was
// appended, else 0.
int ParsePlayListRecord(WStringView text, CPtrListCtrl& list);
