// What follows when a song has ended.
#pragma once

#include "platform/ce.h"

// Answer to a graph event. At the end of the song the modes decide: the same song again, the next one, or stop. An end
// that is told after stop is dropped.
void TakeGraphEvents(HWND window);
