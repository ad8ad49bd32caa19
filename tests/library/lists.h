// The process-wide lists for one test: empty before it, freed after it.
#pragma once

#include "library/media_entry.h"

#include <string>
#include <vector>

namespace cardsong::test {

struct EmptyLists {
    EmptyLists() { Clear(); }
    ~EmptyLists() { Clear(); }
    EmptyLists(const EmptyLists&) = delete;
    EmptyLists& operator=(const EmptyLists&) = delete;

    static void Clear()
    {
        FreeMediaEntries(PlayList);
        FreeMediaEntries(CardSongList);
    }
};

inline MediaFileEntry& At(const CPtrListCtrl& list, std::int32_t index)
{
    return *static_cast<MediaFileEntry*>(list.GetAt(index));
}

inline void AddEntry(CPtrListCtrl& list, WStringView fileName, WStringView folder, double duration = 0)
{
    MediaFileEntry* entry = NewMediaEntry(fileName, folder);
    entry->duration = duration;
    list.Add(entry, -1);
}

// ASCII text of the paths of a list's entries, in its order.
inline std::vector<std::string> Paths(const CPtrListCtrl& list)
{
    std::vector<std::string> paths;
    for (std::int32_t i = 0; i < list.GetCount(); ++i) {
        std::string path;
        for (const WCHAR unit : PathOf(At(list, i)))
            path += static_cast<char>(unit);
        paths.push_back(path);
    }
    return paths;
}

} // namespace cardsong::test
