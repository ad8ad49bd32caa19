// What the player is doing: one set of values for the process, touched only on the window's thread.
#pragma once

#include "library/saved_play_list.h"
#include "platform/ce.h"

#include <cstdint>
#include <memory>

class MediaPlayer;

extern std::int32_t g_songLoaded;    // 1 from a play command with songs to play until the next stop
extern std::int32_t g_currentNumber; // 1-based position of the current song in the play list; 0: none
extern std::int32_t g_isPlaying;     // 1 while the song sounds, 0 when paused or stopped
extern std::int32_t g_stepBusy;      // 1 while next or previous is changing songs
extern UINT_PTR g_titleTimer;        // 0: not running
extern WString g_elapsedText;
extern WString g_totalText;

[[nodiscard]] inline bool IsSongLoaded()
{
    return g_songLoaded != 0;
}
[[nodiscard]] inline bool IsPlaying()
{
    return g_isPlaying != 0;
}
[[nodiscard]] inline bool IsStepping()
{
    return g_stepBusy != 0;
}
[[nodiscard]] inline bool IsTitleTimerRunning()
{
    return g_titleTimer != 0;
}

extern SavedPlayList g_savedPlayList; // what PlayList was loaded from, and is saved to

// The one player object; made by the first call.
[[nodiscard]] MediaPlayer& Player();
// Ends playback and frees the player object.
void ReleasePlayer();
