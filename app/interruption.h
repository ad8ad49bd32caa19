// A pause that others brought about: another window came to the front, or another program sounds.
#pragma once

#include <cstdint>

struct Interruption {
    std::int32_t isActive = 0; // 1 from the pause until the player goes on by itself
    double positionSeconds = 0;
};

extern Interruption g_interruption;

// Its values one by one.
extern std::int32_t& g_pausedByInterruption;
extern double& g_savedPosition;

[[nodiscard]] bool IsInterrupted();
void BeginInterruption(double positionSeconds);
void EndInterruption();

// Seconds: where the song is for all that show it or go on with it. While an interruption lasts, where it came.
[[nodiscard]] double ShownPosition();
