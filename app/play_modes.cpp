#include "app/play_modes.h"

PlayModes g_playModes;
std::int32_t& g_shuffle = g_playModes.shuffle;
std::int32_t& g_repeatAll = g_playModes.repeatAll;
std::int32_t& g_repeatOne = g_playModes.repeatOne;
std::int32_t& g_shufflePrevious = g_playModes.shufflePrevious;
std::int32_t& g_shuffleNext = g_playModes.shuffleNext;

Repeat PlayModes::RepeatMode() const
{
    if (repeatAll != 0)
        return Repeat::All;
    return repeatOne != 0 ? Repeat::Single : Repeat::Off;
}

void PlayModes::SetRepeat(Repeat mode)
{
    repeatAll = mode == Repeat::All ? 1 : 0;
    repeatOne = mode == Repeat::Single ? 1 : 0;
}
