// The stream drivers of the device: the card's disk "DSK3:" and its host "SDH1:". Knows no file.
#pragma once

#include "platform/ce.h"

namespace cardsong::kernel {

// A handle to the driver; INVALID_HANDLE_VALUE and ERROR_FILE_NOT_FOUND when there is none: both drivers need a card,
// and no other driver exists here.
HANDLE OpenStreamDriver(WStringView name);

} // namespace cardsong::kernel
