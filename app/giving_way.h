// When the player gives way to others, and when it goes on by itself: the foreground, which the audio priority asks it
// to heed, and the device's audio manager.
#pragma once

#include "platform/ce.h"

// Answers WM_ACTIVATE with its arguments. Without the foreground a player whose priority is 2 or more pauses; back in
// it, one that was paused so goes on when the priority is 1 or less. A window of the player's own that
// comes to the front is no loss, and one that goes no return.
void TakeActivation(HWND window, WPARAM wParam, LPARAM other);
// Answers the audio manager's message, with the new state in the high word of `wParam`: from 2 on another one sounds
// and the player pauses; up to 1 a player that was interrupted goes on. What the player itself has told is no news.
void TakeAudioManagerState(HWND window, WPARAM wParam);
