// The play list window: shows PlayList, and which of its songs is marked. What its keys do to the list stands in
// app/play_list_edits.
#pragma once

#include "platform/ce.h"

// Command 24. The songs of an empty list come from the saved list whose card has come back, else from the whole card.
void OpenPlayListWindow(HWND window);
// Command 16: no song stays marked.
void LeavePlayListWindow();
// Command 29: plays the marked song, or the first, and closes the window. An empty list changes nothing.
void PlayFromPlayListWindow(HWND window);
// A row was tapped: its song becomes the marked one. An index outside the list changes nothing.
void MarkSongOfRow(std::int32_t index);

// PlayList or its marks have changed: makes its rows anew and shows them.
void RefreshPlayListWindow();
// The same where nothing but the window needs the rows: costs nothing while it is closed.
void RefreshOpenPlayListWindow();
// Null while it is closed.
[[nodiscard]] HWND OpenedPlayListWindow();
// With the main window.
void FreePlayListWindow();
