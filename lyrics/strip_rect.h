// Where in the lyrics strip text may stand. It knows no window.
#pragma once

#include "platform/ce.h"

// The greatest area of the strip.
inline constexpr RECT kGreatestStripRect = { 0, 0, 284, 70 };

// What `rect` and the greatest area have in common; empty at the origin when that is nothing.
constexpr RECT ClippedStripRect(const RECT& rect)
{
    const RECT& most = kGreatestStripRect;
    const RECT common = { rect.left > most.left ? rect.left : most.left, rect.top > most.top ? rect.top : most.top,
                          rect.right < most.right ? rect.right : most.right,
                          rect.bottom < most.bottom ? rect.bottom : most.bottom };
    return common.left < common.right && common.top < common.bottom ? common : RECT{};
}
