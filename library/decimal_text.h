// Whole numbers as texts.
#pragma once

#include "platform/ce.h"

#include <cstdint>

// "7", "-7": no leading zeros.
WString DecimalText(std::int64_t number);
