#include "app/play_list_filling.h"

#include "app/launch_options.h"
#include "app/player_state.h"
#include "library/card_of_list.h"
#include "library/media_scan.h"

void TakeBackSavedSongs()
{
    if (PlayList.IsEmpty())
        g_savedPlayList.TakeBack(PlayList);
}

void FillFromCard()
{
    if (PlayList.IsEmpty() && g_launchOptions.fillFromCard)
        ScanMediaFolder(kCardFolder, &PlayList, true);
}
