// The device's audio manager, which decides who may sound.
#pragma once

#include "platform/ce.h"

// Tells it that the player's state has changed. `request`: wParam of the command that changed it.
void TellAudioManager(WPARAM request);
