// Play times as the player shows them.
#pragma once

#include "platform/ce.h"

#include <cstdint>

// As many whole seconds of a duration as are shown; one below 0, which only a damaged play list holds, counts as 0.
std::uint32_t WholeSeconds(double seconds);

// "--:--" for 0, "0:59", "1:00:00". Every call overwrites the one text that it returns.
const WCHAR* FormatPlayTime(std::uint32_t seconds);
