#include "app/player_state.h"

#include "playback/media_player.h"

std::int32_t g_songLoaded;
std::int32_t g_currentNumber;
std::int32_t g_isPlaying;
std::int32_t g_stepBusy;
UINT_PTR g_titleTimer;
WString g_elapsedText = TEXT("0:00");
WString g_totalText = TEXT("0:00");
SavedPlayList g_savedPlayList;

namespace {
std::unique_ptr<MediaPlayer> g_player;
} // namespace

MediaPlayer& Player()
{
    if (!g_player)
        g_player = std::make_unique<MediaPlayer>(nullptr, nullptr);
    return *g_player;
}

void ReleasePlayer()
{
    g_player.reset();
}
