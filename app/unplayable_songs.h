// What becomes of a song that cannot be played, and how the player goes on.
#pragma once

#include "library/card_of_list.h"

enum class AfterUnplayable { PlayNext, Stop };

// The current song cannot be played. Its entry leaves the list and is freed; the entry that takes its place becomes
// current, and behind the last one the first, at which the player stops unless it repeats all songs or shuffles them.
// While the card of the list is away nothing leaves it, and the player stops, too.
[[nodiscard]] AfterUnplayable TakeUnplayableSongOut(CardOfList& card);
