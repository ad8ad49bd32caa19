#include "app/play_list_filling.h"

#include "app/card_scan.h"
#include "app/launch_options.h"
#include "app/player_state.h"
#include "library/media_entry.h"

void TakeBackSavedSongs()
{
    if (PlayList.IsEmpty())
        g_savedPlayList.TakeBack(PlayList);
}

void FillFromCard()
{
    if (PlayList.IsEmpty() && g_launchOptions.fillFromCard)
        ScanCard(PlayList);
}
