// The file names of both lists, to be asked many times while neither list loses an entry.
#pragma once

#include "library/media_entry.h"

#include <unordered_set>

class SongNames {
public:
    // Borrows the names of the entries in PlayList and CardSongList.
    SongNames();

    bool Contains(const MediaFileEntry& entry) const { return m_names.count(entry.fileName) > 0; }
    // To be told of each entry that `list` gains; only the two lists count.
    void Add(const CPtrListCtrl& list, const MediaFileEntry& entry);

private:
    void AddAll(const CPtrListCtrl& list);

    std::unordered_set<WStringView> m_names;
};
