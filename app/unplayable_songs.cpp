#include "app/unplayable_songs.h"

#include "app/current_song.h"
#include "app/play_modes.h"
#include "app/player_state.h"

namespace {

void DropCurrentEntry()
{
    SongList(PlayList).Take(g_currentNumber - 1).reset();
    if (!PlayList.IsEmpty())
        MakeCurrent(g_currentNumber <= PlayList.GetCount() ? g_currentNumber : 1);
}

} // namespace

AfterUnplayable TakeUnplayableSongOut(CardOfList& card)
{
    if (!card.IsThere(g_currentNumber - 1))
        return AfterUnplayable::Stop;
    DropCurrentEntry();
    const bool goesRound = g_playModes.IsRepeatAllOn() || g_playModes.IsShuffleOn();
    return g_currentNumber > 1 || goesRound ? AfterUnplayable::PlayNext : AfterUnplayable::Stop;
}
