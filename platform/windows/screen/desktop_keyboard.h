// What a desktop's keyboard does on the device's screen: its keys become keys of the device, commands and taps.
#pragma once

#include "platform/desktop_keys.h"

namespace cardsong::screen {

// Call it before the player makes its first window.
void SetDesktopKeys(const DesktopKeys& keys);
// Changes a message of a key that the calling thread has just taken into what the key stands for. Nothing before the
// screen is set up.
void TurnIntoDeviceInput(MSG& message);
// Posts the command to the screen's window if that would take it now; see CommandKey.
void GiveCommand(WORD command);

} // namespace cardsong::screen
