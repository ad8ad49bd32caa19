#include "platform/linux/user/dialog_units.h"

namespace cardsong::user {

namespace {

constexpr int kBaseWidthPx = 8;
constexpr int kBaseHeightPx = 16;
constexpr int kUnitsPerBaseWidth = 4;
constexpr int kUnitsPerBaseHeight = 8;

} // namespace

int PixelsAcross(LONG units)
{
    return units * kBaseWidthPx / kUnitsPerBaseWidth;
}

int PixelsDown(LONG units)
{
    return units * kBaseHeightPx / kUnitsPerBaseHeight;
}

} // namespace cardsong::user
