// What the song lists show of each song: its number and file name, its play time, its state.
#pragma once

#include "common/skin_list_item.h"
#include "containers/ptr_list_ctrl.h"
#include "platform/ce.h"

#include <cstdint>
#include <span>

inline constexpr std::int32_t kPlayListRowState = 4;
inline constexpr std::int32_t kCardSongRowState = 0;

// The list control's own record. Main text: "1 song.mp3"; secondary text: the play time; first check state: as above;
// the second one is not used.
using SongListRow = SkinListItem;

// Makes the rows of a list of MediaFileEntry* anew, as those of the card's songs or of the play list. The rows of an
// empty list stay as they were. More than 10,526,880 entries have no rows. The rows copy what they show: the list goes
// on owning its entries, and nobody frees rows.
void BuildSongListRows(const CPtrListCtrl& list, bool isCardList);

// The rows last built, until they are built again.
std::span<SongListRow> PlayListRows();
std::span<SongListRow> CardSongRows();
