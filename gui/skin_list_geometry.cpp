#include "gui/skin_list_geometry.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr LONG kTextIndentPx = 10; // of a text without a check box
constexpr LONG kCheckWidthPx = 45;
constexpr LONG kSecondaryWidthPx = 50;

} // namespace

std::optional<int> SkinListRowAt(POINT point)
{
    const auto found = std::ranges::find_if(kSkinListRowRects, [point](const RECT& row) {
        return point.x >= row.left && point.x < row.right && point.y >= row.top && point.y < row.bottom;
    });
    if (found == kSkinListRowRects.end())
        return std::nullopt;
    return static_cast<int>(found - kSkinListRowRects.begin());
}

SkinListBoxes SkinListBoxesOf(int row, SkinListMode mode)
{
    const RECT& whole = kSkinListRowRects.at(static_cast<std::size_t>(row));
    const auto box = [&whole](LONG left, LONG right) { return RECT{ left, whole.top, right, whole.bottom }; };
    SkinListBoxes boxes = {};
    if (mode == SkinListMode::Text) {
        boxes.mainText = box(whole.left + kTextIndentPx, whole.right);
        return boxes;
    }
    const LONG textLeft = whole.left + kCheckWidthPx;
    const LONG textRight = textLeft + kSkinListTextWidthPx;
    boxes.firstCheck = box(whole.left, textLeft);
    boxes.mainText = box(textLeft, textRight);
    if (mode == SkinListMode::CheckedText)
        boxes.secondaryText = box(textRight, textRight + kSecondaryWidthPx);
    else
        boxes.secondCheck = box(textRight, whole.right - kCheckWidthPx);
    return boxes;
}
