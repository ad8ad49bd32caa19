// The process-wide lists for one test: empty before it, freed after it.
#pragma once

#include "library/song_list.h"

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
        SongList(PlayList).FreeAll();
        SongList(CardSongList).FreeAll();
    }
};

inline const MediaFileEntry& At(const CPtrListCtrl& list, std::int32_t index)
{
    return ConstSongList(list).At(index);
}

inline void AddEntry(CPtrListCtrl& list, WStringView fileName, WStringView folder, double duration = 0)
{
    SongList(list).Append(NewMediaEntry(fileName, folder)).duration = duration;
}

// ASCII text of the paths of a list's entries, in its order.
inline std::vector<std::string> Paths(const CPtrListCtrl& list)
{
    std::vector<std::string> paths;
    for (const MediaFileEntry& entry : ConstSongList(list)) {
        std::string path;
        for (const WCHAR unit : PathOf(entry))
            path += static_cast<char>(unit);
        paths.push_back(path);
    }
    return paths;
}

} // namespace cardsong::test
