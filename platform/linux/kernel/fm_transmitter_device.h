// The driver of the FM transmitter, on a radio modulator of this machine (Video4Linux, "/dev/radioN").
#pragma once

#include "platform/linux/kernel/devices.h"

#include <memory>

namespace cardsong::kernel {

// Null when no radio of this machine is a modulator.
std::shared_ptr<DeviceObject> OpenFmTransmitter();

} // namespace cardsong::kernel
