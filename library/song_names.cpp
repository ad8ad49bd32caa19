#include "library/song_names.h"

#include "library/song_list.h"

namespace {

bool HasSongName(const CPtrListCtrl& list, const MediaFileEntry& entry)
{
    for (const MediaFileEntry& listed : ConstSongList(list)) {
        if (wcscmp(listed.fileName, entry.fileName) == 0)
            return true;
    }
    return false;
}

} // namespace

int IsNewSongName(const MediaFileEntry& entry)
{
    return HasSongName(CardSongList, entry) || HasSongName(PlayList, entry) ? 0 : 1;
}

SongNames::SongNames()
{
    AddAll(PlayList);
    AddAll(CardSongList);
}

void SongNames::Add(const CPtrListCtrl& list, const MediaFileEntry& entry)
{
    if (&list == &PlayList || &list == &CardSongList)
        m_entries.insert(&entry);
}

void SongNames::AddAll(const CPtrListCtrl& list)
{
    for (const MediaFileEntry& entry : ConstSongList(list))
        m_entries.insert(&entry);
}
