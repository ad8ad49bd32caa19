#include "platform/linux/user/dialog_units.h"

namespace cardsong::user {

namespace {

constexpr int kBaseWidthPx = 8;
constexpr int kBaseHeightPx = 16;
constexpr int kUnitsPerBaseWidth = 4;
constexpr int kUnitsPerBaseHeight = 8;

int Scale(int units, int basePx, int unitsPerBase)
{
    const int doubled = units * basePx * 2;
    return (doubled + (doubled < 0 ? -unitsPerBase : unitsPerBase)) / (2 * unitsPerBase);
}

} // namespace

int PixelsAcross(LONG units)
{
    return Scale(units, kBaseWidthPx, kUnitsPerBaseWidth);
}

int PixelsDown(LONG units)
{
    return Scale(units, kBaseHeightPx, kUnitsPerBaseHeight);
}

} // namespace cardsong::user
