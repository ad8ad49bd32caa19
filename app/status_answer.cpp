#include "app/status_answer.h"

#include "app/interruption.h"
#include "app/play_modes.h"
#include "app/player_state.h"
#include "app/title_ticker.h"
#include "common/player_status.h"
#include "library/media_scan.h"
#include "library/song_list.h"
#include "playback/media_player.h"

#include <limits>

namespace {

// An engine may not know, or say what no song lasts.
std::int32_t Milliseconds(double seconds)
{
    constexpr double kMost = std::numeric_limits<std::int32_t>::max() / 1000;
    return seconds > 0 && seconds <= kMost ? static_cast<std::int32_t>(seconds * 1000) : 0;
}

const WCHAR* RepeatName()
{
    switch (g_playModes.RepeatMode()) {
    case Repeat::All: return kRepeatAll;
    case Repeat::Single: return kRepeatSingle;
    default: return kRepeatOff;
    }
}

} // namespace

void AnswerStatusRequest(WPARAM request)
{
    if (request == 0 || request > std::numeric_limits<std::uint32_t>::max())
        return;
    PlayerStatus status;
    status.request = static_cast<std::uint32_t>(request);
    status.count = PlayList.GetCount();
    status.shuffle = g_playModes.IsShuffleOn();
    status.repeat = RepeatName();
    if (IsSongLoaded()) {
        status.state = IsPlaying() ? kPlaying : kPaused;
        status.number = g_currentNumber;
        status.positionMs = Milliseconds(ShownPosition());
        status.lengthMs = Milliseconds(Player().GetDuration());
        status.song = g_titleText;
    }
    StoreStatus(status);
}
