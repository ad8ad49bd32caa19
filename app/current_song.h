// Which song of the play list is the current one, and its neighbours in order. Knows no window and no sound.
#pragma once

#include "library/media_entry.h"
#include "platform/ce.h"

// The first entry whose mark is a number of the list; null when none is marked. Its mark is the current number.
[[nodiscard]] MediaFileEntry* FindMarkedEntry();
// Leaves the entry of that number, if there is one, as the only marked one.
void MarkEntry(int number);
// Makes the entry of that number, which must exist, the only marked one and the current one.
void MakeCurrent(int number);
// The entry of that number; null outside the list.
[[nodiscard]] MediaFileEntry* EntryAt(int number);
