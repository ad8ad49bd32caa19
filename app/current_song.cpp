#include "app/current_song.h"

#include "app/player_state.h"

MediaFileEntry* FindMarkedEntry()
{
    for (int i = 0; i < PlayList.GetCount(); ++i) {
        auto* const entry = static_cast<MediaFileEntry*>(PlayList.GetAt(i));
        if (entry->playMark >= 1 && entry->playMark <= PlayList.GetCount())
            return entry;
    }
    return nullptr;
}

void MakeCurrent(int number)
{
    for (int i = 0; i < PlayList.GetCount(); ++i)
        static_cast<MediaFileEntry*>(PlayList.GetAt(i))->playMark = i + 1 == number ? number : 0;
    g_currentNumber = number;
}

MediaFileEntry* EntryAt(int number)
{
    return static_cast<MediaFileEntry*>(PlayList.GetAt(number - 1));
}

void DropCurrentEntry()
{
    delete static_cast<MediaFileEntry*>(PlayList.DeleteAt(g_currentNumber - 1, 1));
    if (!PlayList.IsEmpty())
        MakeCurrent(g_currentNumber <= PlayList.GetCount() ? g_currentNumber : 1);
}
