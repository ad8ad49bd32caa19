// A row of a skinned list as its owner fills it. Knows no window.
#pragma once

#include "platform/ce.h"

#include <cstddef>
#include <cstdint>

inline constexpr std::size_t kSkinListTextUnits = 100;

struct SkinListItem {
    WCHAR mainText[kSkinListTextUnits]; // a text that fills its field has no terminating zero
    WCHAR secondaryText[kSkinListTextUnits];
    std::int32_t firstCheckState; // 0: unchecked, 1: checked, any other: no check box is drawn
    std::int32_t secondCheckState;
};
