// The colours of our own system.
#include "tests/platform/gdi/canvas.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::Canvas;

TEST(SystemColorBrush, TheHighlightIsLightSkyBlueUnderBlackText)
{
    Canvas canvas(1, 1);
    const RECT rect = { 0, 0, 1, 1 };
    FillRect(canvas.Dc(), &rect, GetSysColorBrush(COLOR_HIGHLIGHT));
    EXPECT_EQ(canvas.At(0, 0), 0x9F1F); // #9FE3FA
}

} // namespace
