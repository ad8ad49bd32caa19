// How far the song has played: slider and elapsed time, refreshed on the player's progress timer.
#pragma once

void RefreshProgress();
