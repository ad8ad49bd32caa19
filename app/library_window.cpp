#include "app/library_window.h"

#include "app/card_scan.h"
#include "app/command_ids.h"
#include "app/play_list_window.h"
#include "app/registered_messages.h"
#include "app/song_list_window.h"
#include "gui/soft_key_bar.h"
#include "library/song_list.h"

#include <cstddef>
#include <unordered_set>

namespace {

// A bar of four slots, two of them empty; the scroll buttons stand beside the rows.
constexpr int kSoftKeys[] = { kCommandCheckAll, kCommandLibraryDone, kSoftKeyListScrollId, kSoftKeyEmptyId,
                              kSoftKeyEmptyId };
constexpr SongListLook kLook{ kLibraryWindowId, kStringLibraryTitle, TEXT("123"), kSoftKeys };

SongListWindow g_window(kLook, CardSongRows);

// Of names alone, as the scan compares songs.
std::unordered_set<WStringView> NamesInPlayList()
{
    std::unordered_set<WStringView> names;
    for (const MediaFileEntry& entry : ConstSongList(PlayList))
        names.insert(entry.fileName);
    return names;
}

// A song found by an earlier scan may have come into the play list by another road: from a list that was saved.
void DropSongsOfPlayList()
{
    const auto names = NamesInPlayList();
    const SongList songs(CardSongList);
    for (std::int32_t i = songs.Count() - 1; i >= 0; --i)
        if (names.count(songs.At(i).fileName) > 0)
            songs.Take(i).reset();
}

void CheckAll(std::int32_t isChecked)
{
    for (MediaFileEntry& entry : SongList(CardSongList))
        entry.isChecked = isChecked;
}

bool AreAllChecked()
{
    for (const MediaFileEntry& entry : ConstSongList(CardSongList))
        if (entry.isChecked == 0)
            return false;
    return true;
}

// Null where the list has more songs than rows.
SongListRow* RowOf(std::size_t index)
{
    const std::span<SongListRow> rows = CardSongRows();
    return index < rows.size() ? &rows[index] : nullptr;
}

// The rows are built unchecked.
void BuildRows()
{
    BuildSongListRows(CardSongList, true);
    std::size_t place = 0;
    for (const MediaFileEntry& entry : ConstSongList(CardSongList))
        if (SongListRow* const row = RowOf(place++))
            row->firstCheckState = entry.isChecked;
}

} // namespace

void OpenLibraryWindow(HWND window)
{
    ScanCard(CardSongList);
    DropSongsOfPlayList();
    CheckAll(0);
    BuildRows();
    g_window.Open(window, OpenedPlayListWindow(), CardSongList.GetCount());
}

void LeaveLibraryWindow(HWND window)
{
    g_window.Close();
    SendMessageW(window, g_msgUserAddSongs, 0, 0);
}

void CheckAllOrNone()
{
    CheckAll(AreAllChecked() ? 0 : 1);
    RefreshLibraryWindow();
}

void TurnCheckOfRow(std::int32_t index)
{
    MediaFileEntry* const entry = SongList(CardSongList).Find(index);
    if (entry == nullptr)
        return;
    entry->isChecked = entry->isChecked == 0 ? 1 : 0;
    if (SongListRow* const row = RowOf(static_cast<std::size_t>(index)))
        row->firstCheckState = entry->isChecked;
    g_window.RepaintRow(index);
}

void RefreshLibraryWindow()
{
    BuildRows();
    g_window.RowsChanged(CardSongList.GetCount());
}

void FreeLibraryWindow()
{
    g_window.Free();
}
