#include "app/play_list_window.h"

#include "app/command_ids.h"
#include "app/current_song.h"
#include "app/play_list_filling.h"
#include "app/song_list_window.h"
#include "gui/soft_key_bar.h"
#include "library/song_list.h"

namespace {

constexpr int kSoftKeys[] = { kCommandPlayMarked,    kCommandRemoveMarked, kCommandLibraryWindow, kCommandAddCard,
                              kCommandClearPlayList, kCommandPlayListBack, kSoftKeyListScrollId };
constexpr SongListLook kLook{ kPlayListWindowId, kStringPlayListTitle, TEXT(""), kSoftKeys };

SongListWindow g_window(kLook, PlayListRows);

std::int32_t MarkedIndex()
{
    const MediaFileEntry* const marked = FindMarkedEntry();
    return marked != nullptr ? marked->playMark - 1 : kNoSelection;
}

} // namespace

void OpenPlayListWindow(HWND window)
{
    TakeBackSavedSongs();
    if (PlayList.IsEmpty())
        SendMessageW(window, WM_COMMAND, kCommandAddCard, 0);
    BuildSongListRows(PlayList, false);
    g_window.Open(window, nullptr, PlayList.GetCount());
    g_window.ShowRow(MarkedIndex());
    g_window.SelectRow(MarkedIndex());
}

void LeavePlayListWindow()
{
    MarkEntry(0);
    g_window.Close();
}

void PlayFromPlayListWindow(HWND window)
{
    if (PlayList.IsEmpty())
        return;
    SendMessageW(window, WM_COMMAND, kCommandStop, 0);
    SendMessageW(window, WM_COMMAND, kCommandPlay, 0);
    g_window.Close();
}

void MarkSongOfRow(std::int32_t index)
{
    if (SongList(PlayList).Find(index) != nullptr)
        MarkEntry(index + 1);
}

void RefreshPlayListWindow()
{
    BuildSongListRows(PlayList, false);
    g_window.RowsChanged(PlayList.GetCount());
    g_window.SelectRow(MarkedIndex());
}

void RefreshOpenPlayListWindow()
{
    if (g_window.IsOpen())
        RefreshPlayListWindow();
}

HWND OpenedPlayListWindow()
{
    return g_window.Window();
}

void FreePlayListWindow()
{
    g_window.Free();
}
