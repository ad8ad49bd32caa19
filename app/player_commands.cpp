#include "app/player_commands.h"

#include "app/audio_settings.h"
#include "app/command_ids.h"
#include "app/library_window.h"
#include "app/play_list_edits.h"
#include "app/play_list_window.h"
#include "app/play_mode_commands.h"
#include "app/player_end.h"
#include "app/song_steps.h"
#include "app/transport.h"

namespace {

using CommandHandler = void (*)(HWND window, WPARAM request);

struct CommandEntry {
    WORD id;
    CommandHandler handler;
};

constexpr CommandEntry kCommands[] = {
    { kCommandPlayListBack, [](HWND, WPARAM) { LeavePlayListWindow(); } },
    { kCommandExit, ExitPlayer },
    { kCommandAudioSettings, [](HWND, WPARAM) { StartAudioSettings(); } },
    { kCommandPlayListWindow, [](HWND window, WPARAM) { OpenPlayListWindow(window); } },
    { kCommandLibraryWindow, [](HWND window, WPARAM) { OpenLibraryWindow(window); } },
    { kCommandClearPlayList, [](HWND window, WPARAM) { ClearPlayList(window); } },
    { kCommandPlayMarked, [](HWND window, WPARAM) { PlayFromPlayListWindow(window); } },
    { kCommandCheckAll, [](HWND, WPARAM) { CheckAllOrNone(); } },
    { kCommandAddCard, [](HWND, WPARAM) { AddWholeCard(); } },
    { kCommandRemoveMarked, [](HWND window, WPARAM) { RemoveMarkedSong(window); } },
    { kCommandLibraryDone, [](HWND window, WPARAM) { LeaveLibraryWindow(window); } },
    { kCommandPrevious, [](HWND window, WPARAM) { StepToPrevious(window); } },
    { kCommandBack5, [](HWND, WPARAM) { StepBack5Seconds(); } },
    { kCommandPlay, [](HWND window, WPARAM) { PlayOrPause(window); } },
    { kCommandPause, [](HWND window, WPARAM) { PlayOrPause(window); } },
    { kCommandStop, StopSong },
    { kCommandForward5, [](HWND, WPARAM) { StepForward5Seconds(); } },
    { kCommandNext, [](HWND window, WPARAM) { StepToNext(window); } },
    { kCommandShuffleOff, [](HWND, WPARAM) { ToggleShuffle(); } },
    { kCommandShuffleOn, [](HWND, WPARAM) { ToggleShuffle(); } },
    { kCommandRepeatOff, [](HWND, WPARAM) { StepRepeatMode(); } },
    { kCommandRepeatAll, [](HWND, WPARAM) { StepRepeatMode(); } },
    { kCommandRepeatSingle, [](HWND, WPARAM) { StepRepeatMode(); } },
};

} // namespace

void ActOnCommand(HWND window, WPARAM request, LPARAM control)
{
    if (LOWORD(request) == kCommandExit && control != 0)
        NoteThatUserExits();
    for (const auto& command : kCommands)
        if (command.id == LOWORD(request))
            command.handler(window, request);
}
