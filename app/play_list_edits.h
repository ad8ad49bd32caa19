// How songs come into the play list and leave it by the user's will.
#pragma once

#include "platform/ce.h"

// Command 31: every song of the card, and of the library, that is not in the play list joins it at the end.
void AddWholeCard();
// Answer to g_msgUserAddSongs: the checked songs of the library join the play list at the end.
void AddCheckedSongs();
// Command 33: the marked song leaves; the one behind it is marked then. The current song stays the same one; the player
// stops when it is the one that leaves.
void RemoveMarkedSong(HWND window);
// Command 28: stops, and empties the list.
void ClearPlayList(HWND window);
