// The time in a tag of LRC text: minutes, seconds and hundredths ("01:23.45").
#pragma once

#include "platform/ce.h"

#include <optional>

// `tag`: what stands between the brackets. In milliseconds; nothing when it is no time. A field has at most two digits,
// and none is 0. Minutes end at ":" and seconds at "."; behind two digits stands any one character. The fraction is of
// hundredths, however many digits it has ("5" is 50 ms), and what follows its first two counts for nothing. Minutes
// alone are no time.
std::optional<std::int32_t> ReadTimeTag(WStringView tag);
