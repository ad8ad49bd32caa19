// From LRC text to the lines of a song. It knows no file, no code page and no song.
#pragma once

#include "lyrics/lyric_list.h"

// Texts that are joined because they have one time hold no more units than this together, in one list: as many as the
// largest text that is read. So only a text that repeats its stamps on purpose reaches it. What would pass it is
// dropped.
inline constexpr std::size_t kMostJoinedUnits = 4U << 20;

// Fills `lines`, which is empty, as if each text were added (LyricList::Add) at each of its times in their order. The
// time it takes grows with the length of `text`, whatever the order of its stamps. Text ends at its first zero.
void ParseLrcText(WStringView text, LyricList lines);
