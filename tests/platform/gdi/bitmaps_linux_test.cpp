// The largest picture that is given memory: a gate of our own, which the real system does not have.
#include "tests/platform/gdi/canvas.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::DescribeRgb565;

HBITMAP CreateSection(LONG widthPx, LONG heightPx)
{
    const auto info = DescribeRgb565(widthPx, heightPx);
    return CreateDIBSection(nullptr, info.Get(), DIB_RGB_COLORS, nullptr, nullptr, 0);
}

TEST(GdiBitmaps, SixteenMillionPixelsPassTheGateAndNotOneRowMore)
{
    const HBITMAP largest = CreateSection(4096, 4096);
    EXPECT_NE(largest, nullptr);
    DeleteObject(largest);
    EXPECT_EQ(CreateSection(4096, 4097), nullptr);
    EXPECT_EQ(CreateSection(4096, -4097), nullptr);
    EXPECT_EQ(CreateSection(4097, 4096), nullptr);
}

} // namespace
