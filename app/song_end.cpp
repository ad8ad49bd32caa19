#include "app/song_end.h"

#include "app/command_ids.h"
#include "app/current_song.h"
#include "app/play_modes.h"
#include "app/player_controls.h"
#include "app/player_state.h"
#include "playback/media_player.h"

namespace {

void PlayAgain(HWND window)
{
    MakeCurrent(g_currentNumber); // whichever row is marked meanwhile
    SendMessageW(window, WM_COMMAND, kCommandStop, 0);
    SendMessageW(window, WM_COMMAND, kCommandPlay, 0);
}

} // namespace

void TakeGraphEvents(HWND window)
{
    if (!Player().CheckEndOfStream() || !IsSongLoaded())
        return;
    g_controls.buttons.Enable(kCommandForward5, false);
    if (g_playModes.RepeatMode() == Repeat::Single)
        PlayAgain(window);
    else if (g_playModes.IsShuffleOn() || g_playModes.IsRepeatAllOn())
        SendMessageW(window, WM_COMMAND, kCommandNext, 0);
    else
        SendMessageW(window, WM_COMMAND, kCommandStop, 0);
}
