// What the player does when the storage card is pulled out while it runs.
#pragma once

#include "platform/ce.h"

// Answers WM_DEVICECHANGE. When the card's port is gone, the song stops, the user is told, and once the notice has
// closed the player exits; the window handles no message meanwhile. Any other change goes to the default procedure.
// `header`: a DEV_BROADCAST_HDR or null, from whoever sent it; what lies behind the size that it states is not read.
LRESULT TakeDeviceChange(HWND window, WPARAM event, LPARAM header);
