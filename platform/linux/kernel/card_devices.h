// The drivers of the card: its disk and its host.
#pragma once

#include "platform/linux/kernel/devices.h"

#include <memory>

namespace cardsong::kernel {

// Null without a card. The disk knows no code; the host tells by its own whether the card is ready.
std::shared_ptr<DeviceObject> OpenCardDisk();
std::shared_ptr<DeviceObject> OpenCardHost();

} // namespace cardsong::kernel
