// Where the buttons of a soft-key bar lie and which skin they wear. Knows no window.
#pragma once

#include "gui/skin_button.h"
#include "platform/screen_size.h"

#include <optional>
#include <span>
#include <vector>

constexpr int kSoftKeyHeightPx = 32;
constexpr int kSoftKeyTopPx = kScreenHeightPx - kSoftKeyHeightPx;

// The scroll buttons of a list.
constexpr RECT kScrollUpPlace = { 258, 26, 258 + 62, 26 + 91 };
constexpr RECT kScrollDownPlace = { 258, 117, 258 + 62, 117 + 91 };

// One button of a bar. An empty slot has id 0.
struct SoftKeyPlan {
    UINT id = 0;
    RECT place = {};
    ButtonImageSet skin = {};
    bool takesCallersLook = false; // caption and image set of its slot, where the caller gave any
};

// One plan a button: `count`, or one more when a pair is among the first `count` ids. Missing ids are empty slots.
// Nothing when `count` is not 2 to 7.
std::optional<std::vector<SoftKeyPlan>> PlanSoftKeys(int count, std::span<const int> ids);
