#include "app/player_end.h"

#include "app/audio_manager.h"
#include "app/audio_priority.h"
#include "app/command_ids.h"
#include "app/launch_options.h"
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

#include <utility>

namespace {

constexpr int kEnded = 0;
constexpr int kUserPressedExit = 10;

bool g_userExits = false;

int ExitStatus()
{
    const bool userExits = std::exchange(g_userExits, false);
    return userExits && g_launchOptions.tellExit ? kUserPressedExit : kEnded;
}

void FreeWhatIsShown()
{
    FreeLibraryWindow();
    FreePlayListWindow();
    FreeControls();
    FreeBackground();
}

} // namespace

void NoteThatUserExits()
{
    g_userExits = true;
}

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
    PostQuitMessage(ExitStatus());
}
