#include "app/interruption.h"

#include "app/player_state.h"
#include "playback/media_player.h"

Interruption g_interruption;
std::int32_t& g_pausedByInterruption = g_interruption.isActive;
double& g_savedPosition = g_interruption.positionSeconds;

bool IsInterrupted()
{
    return g_interruption.isActive != 0;
}

void BeginInterruption(double positionSeconds)
{
    g_interruption = { 1, positionSeconds };
}

void EndInterruption()
{
    g_interruption = {};
}

double ShownPosition()
{
    return IsInterrupted() ? g_interruption.positionSeconds : Player().GetPosition();
}
