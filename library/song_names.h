// Whether PlayList or CardSongList has a song of a file name.
#pragma once

#include "library/media_entry.h"

#include <unordered_set>

// 1 when no entry of either list has this file name, letters compared exactly; folders do not count. It walks both
// lists.
int IsNewSongName(const MediaFileEntry& entry);

// The same answer to many questions: a set of the names, good while neither list loses an entry.
class SongNames {
public:
    // Borrows the entries in PlayList and CardSongList.
    SongNames();

    bool Contains(const MediaFileEntry& entry) const { return m_entries.count(&entry) > 0; }
    // To be told of each entry that `list` gains; only the two lists count.
    void Add(const CPtrListCtrl& list, const MediaFileEntry& entry);

private:
    // Entries are the same when their file names are.
    struct HashOfName {
        std::size_t operator()(const MediaFileEntry* entry) const { return std::hash<WStringView>()(entry->fileName); }
    };
    struct SameName {
        bool operator()(const MediaFileEntry* a, const MediaFileEntry* b) const
        {
            return WStringView(a->fileName) == b->fileName;
        }
    };
    void AddAll(const CPtrListCtrl& list);

    std::unordered_set<const MediaFileEntry*, HashOfName, SameName> m_entries;
};
