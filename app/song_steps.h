// Next and previous: which song follows which, and the change from one to the other.
#pragma once

#include "platform/ce.h"

// The next song of the list; at the last one the player stops. A paused player stays paused on the new song.
void StepToNext(HWND window);
// The song before; at the first one nothing changes.
void StepToPrevious(HWND window);
