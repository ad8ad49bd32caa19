// What the song lists show of each song: its number and file name, its play time, its state.
#pragma once

#include "containers/ptr_list_ctrl.h"
#include "platform/ce.h"

#include <cstdint>
#include <span>

inline constexpr std::size_t kRowTextUnits = 100;
inline constexpr std::int32_t kPlayListRowState = 4;
inline constexpr std::int32_t kCardSongRowState = 0;

// A row as the list control takes it: the control's own record, of a fixed layout.
struct SongListRow {
    WCHAR label[kRowTextUnits]; // "1 song.mp3"
    WCHAR time[kRowTextUnits];
    std::int32_t state;
    std::int32_t reserved;
};

// Makes the rows of a list of MediaFileEntry* anew, as those of the card's songs or of the play list. The rows of an
// empty list stay as they were. More than 10,526,880 entries have no rows. The rows copy what they show: the list goes
// on owning its entries, and nobody frees rows.
void BuildSongListRows(const CPtrListCtrl& list, bool isCardList);

// The rows last built, until they are built again.
std::span<SongListRow> PlayListRows();
std::span<SongListRow> CardSongRows();
