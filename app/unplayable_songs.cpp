#include "app/unplayable_songs.h"

#include "app/current_song.h"
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
    return g_currentNumber > 1 ? AfterUnplayable::PlayNext : AfterUnplayable::Stop;
}
