// Scans the card for songs while the player's picture stays alive. Knows which messages wait for the end of the scan,
// and not what is done with the songs.
#pragma once

#include "containers/ptr_list_ctrl.h"
#include "platform/ce.h"

// How long a scan may take before the processing box shows.
constexpr DWORD kScanBoxAfterMs = 300;

// Appends the card's new songs, those of its folders too, to `list`, which is PlayList or CardSongList. Meanwhile only
// timers and paints of this thread's windows are answered. A card that is pulled ends the scan with what was found.
void ScanCard(CPtrListCtrl& list);

// Commands and notices may change the lists, so none is obeyed while a scan goes on: one that another thread or program
// sends is posted instead, and its sender gets 0. True when that was done, or could not be.
[[nodiscard]] bool WaitsForScan(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
