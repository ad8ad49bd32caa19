#include "library/song_names.h"

namespace {

bool HasSongName(const CPtrListCtrl& list, const MediaFileEntry& entry)
{
    for (std::int32_t i = 0; i < list.GetCount(); ++i) {
        if (wcscmp(static_cast<const MediaFileEntry*>(list.GetAt(i))->fileName, entry.fileName) == 0)
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
    for (std::int32_t i = 0; i < list.GetCount(); ++i)
        m_entries.insert(static_cast<const MediaFileEntry*>(list.GetAt(i)));
}
