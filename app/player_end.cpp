#include "app/player_end.h"

#include "app/audio_manager.h"
#include "app/audio_priority.h"
#include "app/command_ids.h"
#include "app/library_window.h"
#include "app/lyrics_display.h"
#include "app/main_paint.h"
#include "app/play_list_window.h"
#include "app/player_controls.h"
#include "app/player_state.h"
#include "app/task_bar.h"
#include "library/saved_play_list.h"
#include "library/song_list.h"
#include "playback/media_player.h"

namespace {

void FreeWhatIsShown()
{
    FreeLibraryWindow();
    FreePlayListWindow();
    FreeControls();
    FreeBackground();
}

} // namespace

void ExitPlayer(HWND window, WPARAM request)
{
    if (IsSongLoaded())
        SendMessageW(window, WM_COMMAND, kCommandStop, 0);
    KeepAudioPriority();
    TellAudioManager(request);
    g_savedPlayList.Save(PlayList);
    FreeWhatIsShown();
    DestroyWindow(window);
}

void EndPlayer(HWND window)
{
    SendMessageW(window, WM_COMMAND, kCommandStop, 0);
    EndLyrics();
    SongList(PlayList).FreeAll();
    SongList(CardSongList).FreeAll();
    ShowTaskBar();
    FreeWhatIsShown();
    ReleasePlayer();
    PostQuitMessage(0);
}
