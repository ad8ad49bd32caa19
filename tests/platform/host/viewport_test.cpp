#include "platform/host/viewport.h"

#include "platform/screen_size.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace cardsong::host;

constexpr Turn kTurns[] = { Turn::None, Turn::Quarter, Turn::Half, Turn::ThreeQuarters };

void ExpectPoint(const POINT& point, LONG x, LONG y)
{
    EXPECT_EQ(point.x, x);
    EXPECT_EQ(point.y, y);
}

void ExpectRect(const RECT& rect, const RECT& expected)
{
    EXPECT_EQ(rect.left, expected.left);
    EXPECT_EQ(rect.top, expected.top);
    EXPECT_EQ(rect.right, expected.right);
    EXPECT_EQ(rect.bottom, expected.bottom);
}

bool Holds(const RECT& rect, int x, int y)
{
    return x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
}

RECT PixelAt(const POINT& point)
{
    return { point.x, point.y, point.x + 1, point.y + 1 };
}

} // namespace

TEST(Viewport, FillsASurfaceOfAWholeMultiple)
{
    EXPECT_EQ(FitViewport(640, 480), (Viewport{ 0, 0, 640, 480 }));
    EXPECT_EQ(FitViewport(320, 240), (Viewport{ 0, 0, 320, 240 }));
    EXPECT_EQ(FitViewport(480, 640, Turn::Quarter), (Viewport{ 0, 0, 480, 640, Turn::Quarter }));
}

TEST(Viewport, IsCentredInAWiderSurface)
{
    EXPECT_EQ(FitViewport(1920, 1080), (Viewport{ 320, 60, 1280, 960 }));
    EXPECT_EQ(FitViewport(800, 480), (Viewport{ 80, 0, 640, 480 }));
    EXPECT_EQ(FitViewport(480, 800), (Viewport{ 80, 280, 320, 240 }));
    EXPECT_EQ(FitViewport(480, 800, Turn::ThreeQuarters), (Viewport{ 0, 80, 480, 640, Turn::ThreeQuarters }));
}

TEST(Viewport, IsMadeSmallerInProportionOnASmallerSurface)
{
    EXPECT_EQ(FitViewport(160, 120), (Viewport{ 0, 0, 160, 120 }));
    EXPECT_EQ(FitViewport(240, 320), (Viewport{ 0, 70, 240, 180 }));
    EXPECT_EQ(FitViewport(160, 120, Turn::Quarter), (Viewport{ 35, 0, 90, 120, Turn::Quarter }));
    EXPECT_EQ(FitViewport(319, 240), (Viewport{ 0, 0, 319, 239 }));
    EXPECT_EQ(FitViewport(4000, 120), (Viewport{ 1920, 0, 160, 120 }));
}

TEST(Viewport, HasAPixelOnASurfaceOfNone)
{
    EXPECT_EQ(FitViewport(0, 0), (Viewport{ 0, 0, 1, 1 }));
    EXPECT_EQ(FitViewport(1, 1, Turn::Half), (Viewport{ 0, 0, 1, 1, Turn::Half }));
}

TEST(Viewport, ItsScaleIsWholeOrNone)
{
    EXPECT_EQ(ScaleOf(FitViewport(320, 240)), 1);
    EXPECT_EQ(ScaleOf(FitViewport(1920, 1080)), 4);
    EXPECT_EQ(ScaleOf(FitViewport(480, 640, Turn::Quarter)), 2);
    EXPECT_EQ(ScaleOf(FitViewport(319, 240)), 0);
}

TEST(Viewport, TheSmallestSurfacesHoldIt)
{
    for (const Turn turn : kTurns) {
        for (int width = 1; width <= 330; width += 7) {
            for (int height = 1; height <= 330; height += 3) {
                const Viewport place = FitViewport(width, height, turn);
                ASSERT_GE(place.left, 0);
                ASSERT_GE(place.top, 0);
                ASSERT_GE(place.widthPx, 1);
                ASSERT_GE(place.heightPx, 1);
                ASSERT_LE(place.left + place.widthPx, width);
                ASSERT_LE(place.top + place.heightPx, height);
                ASSERT_TRUE(place.widthPx == width || place.heightPx == height || ScaleOf(place) == 1);
            }
        }
    }
}

TEST(Viewport, ThePictureStaysUprightWhereThatFits)
{
    EXPECT_EQ(TurnThatFits(320, 240), Turn::None);
    EXPECT_EQ(TurnThatFits(1920, 1080), Turn::None);
    EXPECT_EQ(TurnThatFits(480, 800), Turn::None);
    EXPECT_EQ(TurnThatFits(320, 480), Turn::None);
}

TEST(Viewport, ASmallUprightScreenTurnsThePicture)
{
    EXPECT_EQ(TurnThatFits(240, 320), Turn::Quarter);
    EXPECT_EQ(TurnThatFits(272, 480), Turn::Quarter);
    EXPECT_EQ(TurnThatFits(319, 640), Turn::Quarter);
    EXPECT_EQ(TurnThatFits(120, 160), Turn::Quarter);
    EXPECT_EQ(TurnThatFits(176, 220), Turn::Quarter);
}

TEST(Viewport, ASmallScreenThatATurnDoesNotHelpKeepsItUpright)
{
    EXPECT_EQ(TurnThatFits(160, 120), Turn::None);
    EXPECT_EQ(TurnThatFits(240, 240), Turn::None);
    EXPECT_EQ(TurnThatFits(480, 234), Turn::None);
    EXPECT_EQ(TurnThatFits(0, 0), Turn::None);
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

TEST(Viewport, ATurnedWindowFitsTheDesktopToo)
{
    EXPECT_EQ(ComfortableScale(1920, 1080, Turn::Quarter), 2);
    EXPECT_EQ(ComfortableScale(1024, 600, Turn::Quarter), 1);
    EXPECT_EQ(ComfortableScale(480, 640, Turn::Quarter), 2);
}

TEST(Viewport, AWindowFitsASmallDesktop)
{
    EXPECT_EQ(ComfortableScale(639, 480), 1);
    EXPECT_EQ(ComfortableScale(320, 240), 1);
    EXPECT_EQ(ComfortableScale(100, 100), 1);
}

TEST(Viewport, AWindowIsNoLargerThanItsDesktop)
{
    const struct {
        SIZE desktop;
        Turn turn;
        SIZE window;
    } kCases[] = {
        { { 1024, 768 }, Turn::None, { 640, 480 } }, { { 1920, 1080 }, Turn::Quarter, { 480, 640 } },
        { { 320, 240 }, Turn::None, { 320, 240 } },  { { 320, 220 }, Turn::None, { 293, 220 } },
        { { 100, 100 }, Turn::Half, { 100, 75 } },
    };
    for (const auto& [desktop, turn, window] : kCases) {
        const SIZE size = ComfortableSize(static_cast<int>(desktop.cx), static_cast<int>(desktop.cy), turn);
        EXPECT_EQ(size.cx, window.cx) << desktop.cx << " x " << desktop.cy;
        EXPECT_EQ(size.cy, window.cy) << desktop.cx << " x " << desktop.cy;
    }
}

TEST(Viewport, PointsBecomePixelsOfTheScreen)
{
    const Viewport viewport = { 80, 10, 640, 480 };
    const auto corner = ToScreenPoint(viewport, 80, 10);
    ASSERT_TRUE(corner);
    ExpectPoint(*corner, 0, 0);
    const auto last = ToScreenPoint(viewport, 80 + 639, 10 + 479);
    ASSERT_TRUE(last);
    ExpectPoint(*last, 319, 239);
}

TEST(Viewport, TheBlackAroundIsNoPartOfTheScreen)
{
    const Viewport viewport = { 80, 10, 640, 480 };
    EXPECT_FALSE(ToScreenPoint(viewport, 79, 10));
    EXPECT_FALSE(ToScreenPoint(viewport, 80, 9));
    EXPECT_FALSE(ToScreenPoint(viewport, 80 + 640, 10));
    EXPECT_FALSE(ToScreenPoint(viewport, 80, 10 + 480));
}

TEST(Viewport, AFingerThatSlidesOffStaysAtTheEdge)
{
    const Viewport viewport = { 80, 10, 640, 480 };
    ExpectPoint(ToNearestScreenPoint(viewport, 0, 0), 0, 0);
    ExpectPoint(ToNearestScreenPoint(viewport, 5000, 5000), 319, 239);
    ExpectPoint(ToNearestScreenPoint(viewport, -2'000'000'000, 2'000'000'000), 0, 239);
}

TEST(Viewport, AQuarterClockwisePutsTheTopEdgeAtTheRight)
{
    const Viewport viewport = FitViewport(240, 320, Turn::Quarter);
    ExpectPoint(*ToScreenPoint(viewport, 239, 0), 0, 0);
    ExpectPoint(*ToScreenPoint(viewport, 239, 319), 319, 0);
    ExpectPoint(*ToScreenPoint(viewport, 0, 0), 0, 239);
    ExpectPoint(*ToScreenPoint(viewport, 0, 319), 319, 239);
    ExpectRect(ToSurface(viewport, { 10, 20, 30, 60 }), { 180, 10, 220, 30 });
}

TEST(Viewport, AHalfPutsTheTopEdgeAtTheBottom)
{
    const Viewport viewport = FitViewport(320, 240, Turn::Half);
    ExpectPoint(*ToScreenPoint(viewport, 319, 239), 0, 0);
    ExpectPoint(*ToScreenPoint(viewport, 0, 239), 319, 0);
    ExpectRect(ToSurface(viewport, { 10, 20, 30, 60 }), { 290, 180, 310, 220 });
}

TEST(Viewport, ThreeQuartersClockwisePutTheTopEdgeAtTheLeft)
{
    const Viewport viewport = FitViewport(240, 320, Turn::ThreeQuarters);
    ExpectPoint(*ToScreenPoint(viewport, 0, 319), 0, 0);
    ExpectPoint(*ToScreenPoint(viewport, 0, 0), 319, 0);
    ExpectRect(ToSurface(viewport, { 10, 20, 30, 60 }), { 20, 290, 60, 310 });
}

TEST(Viewport, AFingerSlidesOffTheEdgesOfATurnedPicture)
{
    const Viewport viewport = FitViewport(480, 800, Turn::Quarter);
    ExpectPoint(ToNearestScreenPoint(viewport, 479, 0), 0, 0);
    ExpectPoint(ToNearestScreenPoint(viewport, -50, 790), 319, 239);
    EXPECT_FALSE(ToScreenPoint(viewport, 479, 79));
    EXPECT_TRUE(ToScreenPoint(viewport, 479, 80));
}

// A law of all turns and scales: each pixel of the screen has its own square of the surface, and all of it leads back.
TEST(Viewport, EveryPixelLeadsToItsSquareAndBack)
{
    for (const Turn turn : kTurns) {
        for (int scale = 1; scale <= 4; ++scale) {
            const SIZE size = TurnedSize(turn);
            const Viewport viewport =
                FitViewport(static_cast<int>(size.cx) * scale + 5, static_cast<int>(size.cy) * scale + 9, turn);
            ASSERT_EQ(ScaleOf(viewport), scale);
            for (LONG y = 0; y < kScreenHeightPx; ++y) {
                for (LONG x = 0; x < kScreenWidthPx; ++x) {
                    const RECT square = ToSurface(viewport, { x, y, x + 1, y + 1 });
                    ASSERT_EQ(square.right - square.left, scale);
                    ASSERT_EQ(square.bottom - square.top, scale);
                    for (const POINT corner :
                         { POINT{ square.left, square.top }, POINT{ square.right - 1, square.bottom - 1 } }) {
                        const auto back =
                            ToScreenPoint(viewport, static_cast<int>(corner.x), static_cast<int>(corner.y));
                        ASSERT_TRUE(back && back->x == x && back->y == y)
                            << "turn " << static_cast<int>(turn) << ", scale " << scale << ", " << x << "," << y;
                    }
                }
            }
        }
    }
}

// The law of smaller pictures: what a point of the surface leads to is shown there, too.
TEST(Viewport, EveryPointOfASmallerPictureLeadsToAPixelAndBack)
{
    for (const Turn turn : kTurns) {
        for (const SIZE surface :
             { SIZE{ 319, 239 }, { 240, 320 }, { 160, 120 }, { 120, 160 }, { 97, 61 }, { 3, 2 } }) {
            const Viewport viewport = FitViewport(static_cast<int>(surface.cx), static_cast<int>(surface.cy), turn);
            for (int y = viewport.top; y < viewport.top + viewport.heightPx; ++y) {
                for (int x = viewport.left; x < viewport.left + viewport.widthPx; ++x) {
                    const auto point = ToScreenPoint(viewport, x, y);
                    ASSERT_TRUE(point && point->x >= 0 && point->x < kScreenWidthPx && point->y >= 0 &&
                                point->y < kScreenHeightPx);
                    ASSERT_TRUE(Holds(ToSurface(viewport, PixelAt(*point)), x, y))
                        << "turn " << static_cast<int>(turn) << ", " << surface.cx << " x " << surface.cy << ": " << x
                        << "," << y;
                }
            }
        }
    }
}

TEST(Viewport, TheWholeScreenCoversTheWholeViewport)
{
    for (const Turn turn : kTurns) {
        for (const SIZE surface : { SIZE{ 1000, 700 }, { 319, 239 }, { 97, 61 } }) {
            const Viewport viewport = FitViewport(static_cast<int>(surface.cx), static_cast<int>(surface.cy), turn);
            ExpectRect(
                ToSurface(viewport, { 0, 0, kScreenWidthPx, kScreenHeightPx }),
                { viewport.left, viewport.top, viewport.left + viewport.widthPx, viewport.top + viewport.heightPx });
        }
    }
}
