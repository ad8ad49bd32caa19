// Tells the debug output what plays, for a player that nobody can see.
#pragma once

// Writes title, elapsed and total time, when the start asked for reports and a song is loaded.
void ReportProgress();
