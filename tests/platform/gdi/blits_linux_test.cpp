// A keyed picture made smaller keeps one pixel of several, as the API describes it; Wine joins them.
#include "tests/platform/gdi/canvas.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using cardsong::test::Canvas;

TEST(TransparentImage, KeepsTheLastOfThePixelsThatFallTogether)
{
    Canvas source(5, 1);
    source.Set({ 1, 2, 3, 4, 0xF81F });
    Canvas target(3, 1);
    target.Fill(9);
    EXPECT_TRUE(TransparentImage(target.Dc(), 0, 0, 3, 1, source.Dc(), 0, 0, 5, 1, RGB(255, 0, 255)));
    EXPECT_EQ(target.Pixels(), (std::vector<std::uint16_t>{ 2, 3, 9 }));
}

} // namespace
