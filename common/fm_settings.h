// The settings of the FM transmitter, a file of 20 bytes on the flash volume that all programs of the device share.
// Knows no transmitter.
#pragma once

#include "platform/ce.h"

#include <cstdint>

// The record as it stands in the file: little-endian, without gaps. What a file says is not checked here.
struct FmSettings {
    std::uint32_t enabled = 0; // not 0: the transmitter is on
    std::uint32_t preset = 0;  // the chosen frequency, 0 to 2
    float frequenciesMhz[3] = { 87.5F, 87.5F, 87.5F };
};

// 1 when the file exists. Otherwise it is written with the defaults, together with its folders, and the result is 0.
int EnsureFmSettingsFile();

// 1 when one whole record was read, else 0, and `settings` stays as it was.
int ReadFmSettings(FmSettings& settings);
