#include "app/current_song.h"

#include "app/player_state.h"
#include "library/song_list.h"

MediaFileEntry* FindMarkedEntry()
{
    for (MediaFileEntry& entry : SongList(PlayList)) {
        if (entry.playMark >= 1 && entry.playMark <= PlayList.GetCount())
            return &entry;
    }
    return nullptr;
}

void MarkEntry(int number)
{
    int place = 0;
    for (MediaFileEntry& entry : SongList(PlayList))
        entry.playMark = ++place == number ? number : 0;
}

void MakeCurrent(int number)
{
    MarkEntry(number);
    g_currentNumber = number;
}

MediaFileEntry* EntryAt(int number)
{
    return SongList(PlayList).Find(number - 1);
}
