// How the player ends: what it saves, whom it tells and what it frees.
#pragma once

#include "platform/ce.h"

// The user presses exit, the command for which follows. Where "--tell-exit" asks for it, the program's status says so.
void NoteThatUserExits();
// The exit command: stops the song, saves the play list and destroys the main window. `request`: the command's first
// parameter.
void ExitPlayer(HWND window, WPARAM request);
// When the main window is destroyed, whoever did it: the song ends, everything is freed, and the thread's message loop
// ends.
void EndPlayer(HWND window);
