#include "platform/host/viewport.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using namespace cardsong::host;

TEST(Viewport, FillsASurfaceOfAWholeMultiple)
{
    EXPECT_EQ(FitViewport(640, 480), (Viewport{ 2, 0, 0 }));
    EXPECT_EQ(FitViewport(320, 240), (Viewport{ 1, 0, 0 }));
}

TEST(Viewport, IsCentredInAWiderSurface)
{
    EXPECT_EQ(FitViewport(1920, 1080), (Viewport{ 4, 320, 60 }));
    EXPECT_EQ(FitViewport(800, 480), (Viewport{ 2, 80, 0 }));
}

TEST(Viewport, KeepsTheRealSizeOnASmallerSurface)
{
    EXPECT_EQ(FitViewport(300, 200), (Viewport{ 1, -10, -20 }));
    EXPECT_EQ(FitViewport(319, 239), (Viewport{ 1, -1, -1 }));
}

TEST(Viewport, AWindowIsTwiceTheSizeOnCommonDesktops)
{
    EXPECT_EQ(ComfortableScale(1920, 1080), 2);
    EXPECT_EQ(ComfortableScale(1366, 768), 2);
    EXPECT_EQ(ComfortableScale(1024, 768), 2);
    EXPECT_EQ(ComfortableScale(640, 480), 2);
}

TEST(Viewport, AWindowGrowsWithTheDesktop)
{
    EXPECT_EQ(ComfortableScale(2560, 1440), 3);
    EXPECT_EQ(ComfortableScale(3840, 2160), 5);
}

TEST(Viewport, AWindowFitsASmallDesktop)
{
    EXPECT_EQ(ComfortableScale(639, 480), 1);
    EXPECT_EQ(ComfortableScale(320, 240), 1);
    EXPECT_EQ(ComfortableScale(100, 100), 1);
}

TEST(Viewport, PointsBecomePixelsOfTheScreen)
{
    const Viewport viewport = { 2, 80, 10 };
    const auto corner = ToScreenPoint(viewport, 80, 10);
    ASSERT_TRUE(corner);
    EXPECT_EQ(corner->x, 0);
    EXPECT_EQ(corner->y, 0);
    const auto last = ToScreenPoint(viewport, 80 + 639, 10 + 479);
    ASSERT_TRUE(last);
    EXPECT_EQ(last->x, 319);
    EXPECT_EQ(last->y, 239);
}

TEST(Viewport, TheBlackAroundIsNoPartOfTheScreen)
{
    const Viewport viewport = { 2, 80, 10 };
    EXPECT_FALSE(ToScreenPoint(viewport, 79, 10));
    EXPECT_FALSE(ToScreenPoint(viewport, 80, 9));
    EXPECT_FALSE(ToScreenPoint(viewport, 80 + 640, 10));
    EXPECT_FALSE(ToScreenPoint(viewport, 80, 10 + 480));
}

TEST(Viewport, AFingerThatSlidesOffStaysAtTheEdge)
{
    const Viewport viewport = { 2, 80, 10 };
    const POINT low = ToNearestScreenPoint(viewport, 0, 0);
    EXPECT_EQ(low.x, 0);
    EXPECT_EQ(low.y, 0);
    const POINT high = ToNearestScreenPoint(viewport, 5000, 5000);
    EXPECT_EQ(high.x, 319);
    EXPECT_EQ(high.y, 239);
}

TEST(Viewport, EnlargingRepeatsPixelsAndWidensColors)
{
    const std::array<std::uint16_t, 2> row = { 0xF81F, 0x07E0 };
    std::array<std::uint32_t, 4> wide{};
    EnlargeRow(row, 2, { 16, 8, 0 }, wide);
    EXPECT_EQ(wide, (std::array<std::uint32_t, 4>{ 0xFF00FF, 0xFF00FF, 0x00FF00, 0x00FF00 }));
}

TEST(Viewport, EnlargingKeepsTheScreensOwnFormat)
{
    const std::array<std::uint16_t, 2> row = { 1, 2 };
    std::array<std::uint16_t, 6> wide{};
    EnlargeRow(row, 3, wide);
    EXPECT_EQ(wide, (std::array<std::uint16_t, 6>{ 1, 1, 1, 2, 2, 2 }));
}

} // namespace
