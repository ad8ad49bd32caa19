#include "app/play_list_edits.h"

#include "app/card_scan.h"
#include "app/command_ids.h"
#include "app/current_song.h"
#include "app/library_window.h"
#include "app/play_list_filling.h"
#include "app/play_list_window.h"
#include "app/player_state.h"
#include "library/song_list.h"

namespace {

enum class Joins { All, Checked };

// Walks the library once, however many join.
void MoveFromLibrary(Joins joins)
{
    const SongList library(CardSongList);
    for (std::int32_t i = 0; i < library.Count();) {
        if (joins == Joins::All || library.At(i).isChecked != 0)
            SongList(PlayList).Append(library.Take(i));
        else
            ++i;
    }
    RefreshLibraryWindow();
    RefreshPlayListWindow();
}

} // namespace

void AddWholeCard()
{
    TakeBackSavedSongs();
    ScanCard(PlayList);
    MoveFromLibrary(Joins::All);
}

void AddCheckedSongs()
{
    MoveFromLibrary(Joins::Checked);
}

void RemoveMarkedSong(HWND window)
{
    const MediaFileEntry* const marked = FindMarkedEntry();
    if (marked == nullptr)
        return;
    const std::int32_t number = marked->playMark;
    SongList(PlayList).Take(number - 1).reset();
    if (IsSongLoaded() && number < g_currentNumber) {
        --g_currentNumber;
    } else if (IsSongLoaded() && number == g_currentNumber) {
        g_currentNumber = 0;
        SendMessageW(window, WM_COMMAND, kCommandStop, 0);
    }
    if (MediaFileEntry* const next = EntryAt(number))
        next->playMark = number;
    RefreshPlayListWindow();
}

void ClearPlayList(HWND window)
{
    SendMessageW(window, WM_COMMAND, kCommandStop, 0);
    SongList(PlayList).FreeAll();
    RefreshPlayListWindow();
}
