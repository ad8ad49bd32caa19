// Where everything of a skinned list lies on the screen: one table for drawing and for taps. Knows no window.
#pragma once

#include "platform/ce.h"

#include <array>
#include <cstdint>
#include <optional>

enum class SkinListMode : std::int32_t {
    None = 0,        // no list can be made of it
    Text = 1,        // the main text alone
    CheckedText = 2, // a check box, the main text, the secondary text
    TwoChecks = 3,   // a check box, the main text, a second check box
};

constexpr int kSkinListRows = 4; // of a page
constexpr RECT kSkinListTitleRect{ 0, 0, 300, 26 };
// The title ends before the screen does, the rows where the scroll buttons begin.
constexpr std::array<RECT, kSkinListRows> kSkinListRowRects{ {
    { 0, 27, 258, 71 },
    { 0, 73, 258, 117 },
    { 0, 119, 258, 163 },
    { 0, 165, 258, 209 },
} };
// Lines of one pixel in the gaps between the rows.
constexpr std::array<RECT, kSkinListRows - 1> kSkinListSeparators{ {
    { 5, 72, 258, 73 },
    { 5, 118, 258, 119 },
    { 5, 164, 258, 165 },
} };
// Where the main text stands beside check boxes; a longer text swings.
constexpr int kSkinListTextWidthPx = 145;

// The row, from 0, that holds the point.
std::optional<int> SkinListRowAt(POINT point);

// The boxes of a row. Those that the mode does not have are empty.
struct SkinListBoxes {
    RECT firstCheck;
    RECT mainText;
    RECT secondaryText;
    RECT secondCheck;
};
SkinListBoxes SkinListBoxesOf(int row, SkinListMode mode);
