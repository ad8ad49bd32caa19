// Play times as the player shows them.
#pragma once

#include "platform/ce.h"

#include <cstdint>

// "--:--" for 0, "0:59", "1:00:00". Every call overwrites the one text that it returns.
const WCHAR* FormatPlayTime(std::uint32_t seconds);
