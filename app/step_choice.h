// Which song next and previous go to. Knows no window and no sound; only shuffle's memory changes.
#pragma once

#include "app/play_modes.h"
#include "library/song_list.h"

// `current`: the number of the current song, 1 to the list's count. Both answer a number of the list, or 0 where there
// is nothing to go to.
[[nodiscard]] int ChooseNext(const ConstSongList& list, int current, PlayModes& modes);
[[nodiscard]] int ChoosePrevious(const ConstSongList& list, int current, PlayModes& modes);
