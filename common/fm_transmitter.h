// Sets up the device's FM transmitter, which sends its sound to a car radio, as its settings say.
#pragma once

#include "common/fm_settings.h"

#include <optional>

// A frequency as the transmitter's driver takes it, in hundredths of a megahertz: 8760 for 87.6. What lies between two
// numbers counts as the lower one. Nothing when no number of 16 bits but 0 stands for it.
std::optional<std::uint16_t> FmFrequencyNumber(float frequencyMhz);

// Switches the transmitter on and tunes it to the chosen preset; a preset that does not exist counts as the first.
// Returns `enabled` of the settings; 0 when they leave the transmitter switched off, which is then not touched, or when
// it cannot be opened or powered on. What fails after that is logged and passed over.
DWORD ApplyFmSettings();
