#include "app/play_mode_commands.h"

#include "app/current_song.h"
#include "app/play_modes.h"
#include "app/player_controls.h"
#include "app/player_state.h"
#include "library/song_list.h"

namespace {

PlaceInList CurrentPlace()
{
    return { g_currentNumber, PlayList.GetCount() };
}

void ForgetWhatWasPlayed()
{
    for (MediaFileEntry& entry : SongList(PlayList))
        entry.playedInShuffle = 0;
    MediaFileEntry* const current = EntryAt(g_currentNumber);
    if (IsSongLoaded() && current != nullptr)
        current->playedInShuffle = 1;
}

Repeat ModeAfter(Repeat mode)
{
    switch (mode) {
    case Repeat::Off: return Repeat::All;
    case Repeat::All: return Repeat::Single;
    default: return Repeat::Off;
    }
}

} // namespace

void ToggleShuffle()
{
    const bool isOn = !g_playModes.IsShuffleOn();
    g_shuffle = isOn ? 1 : 0;
    if (isOn)
        ForgetWhatWasPlayed();
    ShowShuffleFace(isOn);
    ChangeStepButtons(isOn ? WhenShuffleGoesOn() : WhenShuffleGoesOff(CurrentPlace(), g_playModes));
}

void StepRepeatMode()
{
    const Repeat mode = ModeAfter(g_playModes.RepeatMode());
    g_playModes.SetRepeat(mode);
    ShowRepeatFace(mode);
    ChangeStepButtons(mode == Repeat::All ? WhenRepeatGoesToAll() : WhenRepeatGoesToSingleOrOff(CurrentPlace()));
}
