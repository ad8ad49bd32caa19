// The library window: the songs of the card that are not in the play list, each with a check box.
#pragma once

#include "platform/ce.h"

// Command 25. Looks for the card's new songs; those found before stay. Nothing is checked.
void OpenLibraryWindow(HWND window);
// Command 35: closes the window, and tells `window` that the checked songs are to join the play list.
void LeaveLibraryWindow(HWND window);
// Command 30: checks all, or none when all are checked.
void CheckAllOrNone();
// A row was tapped: its box is turned. An index outside the list changes nothing.
void TurnCheckOfRow(std::int32_t index);

// CardSongList has changed: makes its rows anew and shows them.
void RefreshLibraryWindow();
// With the main window.
void FreeLibraryWindow();
