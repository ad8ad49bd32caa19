// The device's audio manager, which decides who may sound.
#pragma once

#include "platform/ce.h"

// Tells it that the player's state has changed. `request`: wParam of the command that changed it.
void TellAudioManager(WPARAM request);
// Everybody hears a broadcast, who sent it, too. Whether a message with this wParam is one that the player sent itself;
// each is known once.
[[nodiscard]] bool IsOwnNotice(WPARAM request);
// A new window waits for none of those that an earlier one sent.
void ForgetOwnNotices();
