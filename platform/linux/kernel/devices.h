// The stream drivers of the device: the card's disk "DSK3:" and its host "SDH1:". Knows no file.
#pragma once

#include "platform/linux/kernel/handles.h"

#include <string_view>

namespace cardsong::kernel {

// A handle to the driver; INVALID_HANDLE_VALUE and ERROR_FILE_NOT_FOUND when there is none: both drivers need a card,
// and no other driver exists here.
HANDLE OpenDevice(std::u16string_view name);

} // namespace cardsong::kernel
