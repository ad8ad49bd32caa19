// The system's word to every window that the card's port has gone or come.
#pragma once

#include "platform/linux/host/card_watch.h"

namespace cardsong::host {

// Sends WM_DEVICECHANGE with the port "DSK3:" to the top-level windows. Returns when each has answered.
void BroadcastCardChange(CardChange change);

} // namespace cardsong::host
