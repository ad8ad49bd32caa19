#include "library/song_list.h"

const MediaFileEntry* ConstSongList::Find(std::int32_t index) const
{
    return static_cast<const MediaFileEntry*>(m_list.GetAt(index));
}

MediaFileEntry* SongList::Find(std::int32_t index) const
{
    return static_cast<MediaFileEntry*>(m_list.GetAt(index));
}

MediaFileEntry& SongList::Append(std::unique_ptr<MediaFileEntry> entry) const
{
    MediaFileEntry& appended = *entry;
    m_list.Add(entry.release(), -1);
    return appended;
}

std::unique_ptr<MediaFileEntry> SongList::Take(std::int32_t index) const
{
    return std::unique_ptr<MediaFileEntry>(static_cast<MediaFileEntry*>(m_list.DeleteAt(index, 1)));
}

void SongList::FreeAll() const
{
    for (std::int32_t i = Count() - 1; i >= 0; --i)
        delete Find(i);
    m_list.DeleteAll();
}
