#include "tests/platform/gdi/canvas.h"

#include <gtest/gtest.h>

#include <vector>

using cardsong::test::Canvas;
using Words = std::vector<std::uint16_t>;

namespace {

TEST(BitBlt, CopiesARectangle)
{
    Canvas source(3, 2);
    source.Set({ 1, 2, 3, 4, 5, 6 });
    Canvas target(3, 3);
    EXPECT_TRUE(BitBlt(target.Dc(), 1, 1, 2, 2, source.Dc(), 1, 0, SRCCOPY));
    EXPECT_EQ(target.Pixels(), (Words{ 0, 0, 0, 0, 2, 3, 0, 5, 6 }));
}

TEST(BitBlt, IsCutToTheTarget)
{
    Canvas source(3, 3);
    source.Set({ 1, 2, 3, 4, 5, 6, 7, 8, 9 });
    Canvas target(2, 2);
    EXPECT_TRUE(BitBlt(target.Dc(), -1, -1, 3, 3, source.Dc(), 0, 0, SRCCOPY));
    EXPECT_EQ(target.Pixels(), (Words{ 5, 6, 8, 9 }));
}

TEST(BitBlt, SurvivesCoordinatesAtTheLimits)
{
    Canvas source(1, 1);
    Canvas target(1, 1);
    target.Fill(7);
    BitBlt(target.Dc(), INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX, source.Dc(), 0, 0, SRCCOPY);
    BitBlt(target.Dc(), INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX, source.Dc(), 0, 0, SRCCOPY);
    EXPECT_EQ(target.At(0, 0), 7);
}

TEST(BitBlt, MovesPixelsWithinOneSurface)
{
    Canvas canvas(4, 1);
    canvas.Set({ 1, 2, 3, 4 });
    EXPECT_TRUE(BitBlt(canvas.Dc(), 1, 0, 3, 1, canvas.Dc(), 0, 0, SRCCOPY));
    EXPECT_EQ(canvas.Pixels(), (Words{ 1, 1, 2, 3 }));
    EXPECT_TRUE(BitBlt(canvas.Dc(), 0, 0, 3, 1, canvas.Dc(), 1, 0, SRCCOPY));
    EXPECT_EQ(canvas.Pixels(), (Words{ 1, 2, 3, 3 }));
}

TEST(BitBlt, MovesPixelsWithinASurfaceWhoseRowsArePadded)
{
    Canvas canvas(3, 2);
    canvas.Set({ 1, 2, 3, 4, 5, 6 });
    EXPECT_TRUE(BitBlt(canvas.Dc(), 1, 0, 2, 2, canvas.Dc(), 0, 0, SRCCOPY));
    EXPECT_EQ(canvas.Pixels(), (Words{ 1, 1, 2, 4, 4, 5 }));
}

TEST(BitBlt, OfAnEmptyRectangleDoesNothing)
{
    Canvas source(1, 1);
    source.Fill(9);
    Canvas target(1, 1);
    EXPECT_TRUE(BitBlt(target.Dc(), 0, 0, 0, 1, source.Dc(), 0, 0, SRCCOPY));
    EXPECT_EQ(target.At(0, 0), 0);
}

TEST(BitBlt, NeedsBothContexts)
{
    Canvas canvas(1, 1);
    EXPECT_FALSE(BitBlt(canvas.Dc(), 0, 0, 1, 1, nullptr, 0, 0, SRCCOPY));
    EXPECT_FALSE(BitBlt(nullptr, 0, 0, 1, 1, canvas.Dc(), 0, 0, SRCCOPY));
}

TEST(StretchBlt, RepeatsPixelsWhenEnlarging)
{
    Canvas source(2, 2);
    source.Set({ 1, 2, 3, 4 });
    Canvas target(4, 4);
    EXPECT_TRUE(StretchBlt(target.Dc(), 0, 0, 4, 4, source.Dc(), 0, 0, 2, 2, SRCCOPY));
    EXPECT_EQ(target.Pixels(), (Words{ 1, 1, 2, 2, 1, 1, 2, 2, 3, 3, 4, 4, 3, 3, 4, 4 }));
}

TEST(StretchBlt, MirrorsWithANegativeTargetWidth)
{
    Canvas source(2, 1);
    source.Set({ 1, 2 });
    Canvas target(2, 1);
    EXPECT_TRUE(StretchBlt(target.Dc(), 1, 0, -2, 1, source.Dc(), 0, 0, 2, 1, SRCCOPY));
    EXPECT_EQ(target.Pixels(), (Words{ 2, 1 }));
}

TEST(StretchBlt, MirrorsWithANegativeSourceHeight)
{
    Canvas source(1, 2);
    source.Set({ 1, 2 });
    Canvas target(1, 2);
    EXPECT_TRUE(StretchBlt(target.Dc(), 0, 0, 1, 2, source.Dc(), 0, 1, 1, -2, SRCCOPY));
    EXPECT_EQ(target.Pixels(), (Words{ 2, 1 }));
}

TEST(StretchBlt, DoesNotMirrorWhenBothExtentsAreNegative)
{
    Canvas source(2, 1);
    source.Set({ 1, 2 });
    Canvas target(2, 1);
    EXPECT_TRUE(StretchBlt(target.Dc(), 1, 0, -2, 1, source.Dc(), 1, 0, -2, 1, SRCCOPY));
    EXPECT_EQ(target.Pixels(), (Words{ 1, 2 }));
}

TEST(StretchBlt, JoinsPixelsByAndWhenShrinking)
{
    Canvas source(4, 1);
    source.Set({ 0xFFF0, 0x0FF0, 0x00FF, 0xF0F0 });
    Canvas target(2, 1);
    EXPECT_TRUE(StretchBlt(target.Dc(), 0, 0, 2, 1, source.Dc(), 0, 0, 4, 1, SRCCOPY));
    EXPECT_EQ(target.Pixels(), (Words{ 0x0FF0, 0x00F0 }));
}

TEST(StretchBlt, ToOnePixelLeavesTheLastSourcePixelOut)
{
    Canvas source(3, 1);
    source.Set({ 0xFFF0, 0x0FFF, 0x0000 });
    Canvas target(1, 1);
    EXPECT_TRUE(StretchBlt(target.Dc(), 0, 0, 1, 1, source.Dc(), 0, 0, 3, 1, SRCCOPY));
    EXPECT_EQ(target.At(0, 0), 0x0FF0);
}

// Shows where each source pixel of a line went: source pixel n clears bit n, so a joined pixel lacks several bits.
Words StretchLine(int sourcePx, int sourceExtent, int targetPx, int targetExtent)
{
    Canvas source(sourcePx, 1);
    for (int x = 0; x < sourcePx; ++x)
        source.At(x, 0) = static_cast<std::uint16_t>(~(1u << x));
    Canvas target(targetPx, 1);
    EXPECT_TRUE(StretchBlt(target.Dc(), targetExtent < 0 ? targetPx - 1 : 0, 0, targetExtent, 1, source.Dc(),
                           sourceExtent < 0 ? sourcePx - 1 : 0, 0, sourceExtent, 1, SRCCOPY));
    Words joined = target.Pixels();
    for (auto& word : joined)
        word = static_cast<std::uint16_t>(~word);
    return joined;
}

Words StretchLine(int sourcePx, int targetPx)
{
    return StretchLine(sourcePx, sourcePx, targetPx, targetPx);
}

TEST(StretchBlt, EnlargesByAnyRatioToThePixelUnderEachMiddle)
{
    EXPECT_EQ(StretchLine(2, 3), (Words{ 1, 1, 2 }));
    EXPECT_EQ(StretchLine(3, 4), (Words{ 1, 2, 2, 4 }));
    EXPECT_EQ(StretchLine(3, 5), (Words{ 1, 1, 2, 4, 4 }));
    EXPECT_EQ(StretchLine(4, 7), (Words{ 1, 1, 2, 2, 4, 8, 8 }));
    EXPECT_EQ(StretchLine(5, 9), (Words{ 1, 1, 2, 2, 4, 8, 8, 16, 16 }));
}

TEST(StretchBlt, ShrinksByAnyRatioJoiningEachPixelToTheOneItsMiddleLiesIn)
{
    EXPECT_EQ(StretchLine(3, 2), (Words{ 1 | 2, 4 }));
    EXPECT_EQ(StretchLine(4, 3), (Words{ 1, 2 | 4, 8 }));
    EXPECT_EQ(StretchLine(5, 2), (Words{ 1 | 2 | 4, 8 | 16 }));
    EXPECT_EQ(StretchLine(5, 3), (Words{ 1 | 2, 4, 8 | 16 }));
    EXPECT_EQ(StretchLine(6, 4), (Words{ 1 | 2, 4, 8 | 16, 32 }));
}

TEST(StretchBlt, AMirroredTargetIsTheSamePictureBackwards)
{
    EXPECT_EQ(StretchLine(3, 3, 2, -2), (Words{ 4, 1 | 2 }));
    EXPECT_EQ(StretchLine(2, 2, 3, -3), (Words{ 2, 1, 1 }));
}

TEST(StretchBlt, AMirroredSourceIsReadFromItsEnd)
{
    EXPECT_EQ(StretchLine(3, -3, 2, 2), (Words{ 4 | 2, 1 }));
    EXPECT_EQ(StretchLine(2, -2, 3, 3), (Words{ 2, 2, 1 }));
}

TEST(StretchBlt, MirroredToOnePixelJoinsAllPixels)
{
    EXPECT_EQ(StretchLine(3, 3, 1, -1), (Words{ 7 }));
    EXPECT_EQ(StretchLine(3, -3, 1, 1), (Words{ 7 }));
}

TEST(StretchBlt, ACutTargetShowsWhatTheWholeOneWouldThere)
{
    Canvas source(3, 1);
    source.Set({ 1, 2, 3 });
    Canvas target(3, 1);
    EXPECT_TRUE(StretchBlt(target.Dc(), -2, 0, 8, 1, source.Dc(), 0, 0, 3, 1, SRCCOPY));
    EXPECT_EQ(target.Pixels(), (Words{ 1, 2, 2 })); // of 1 1 1 2 2 3 3 3
}

TEST(StretchBlt, CutsTheTargetWhenItReachesOut)
{
    Canvas source(2, 1);
    source.Set({ 1, 2 });
    Canvas target(2, 1);
    EXPECT_TRUE(StretchBlt(target.Dc(), -2, 0, 4, 1, source.Dc(), 0, 0, 2, 1, SRCCOPY));
    EXPECT_EQ(target.Pixels(), (Words{ 2, 2 }));
}

TEST(TransparentImage, LeavesPixelsOfTheKeyOut)
{
    Canvas source(3, 1);
    source.Set({ 1, 0xF81F, 3 });
    Canvas target(3, 1);
    target.Fill(9);
    EXPECT_TRUE(TransparentImage(target.Dc(), 0, 0, 3, 1, source.Dc(), 0, 0, 3, 1, RGB(255, 0, 255)));
    EXPECT_EQ(target.Pixels(), (Words{ 1, 9, 3 }));
}

TEST(TransparentImage, EnlargesByRepeating)
{
    Canvas source(2, 1);
    source.Set({ 1, 0xF81F });
    Canvas target(4, 2);
    target.Fill(9);
    EXPECT_TRUE(TransparentImage(target.Dc(), 0, 0, 4, 2, source.Dc(), 0, 0, 2, 1, RGB(255, 0, 255)));
    EXPECT_EQ(target.Pixels(), (Words{ 1, 1, 9, 9, 1, 1, 9, 9 }));
}

TEST(TransparentImage, EnlargesByAnyRatio)
{
    Canvas source(3, 1);
    source.Set({ 1, 0xF81F, 3 });
    Canvas target(4, 1);
    target.Fill(9);
    EXPECT_TRUE(TransparentImage(target.Dc(), 0, 0, 4, 1, source.Dc(), 0, 0, 3, 1, RGB(255, 0, 255)));
    EXPECT_EQ(target.Pixels(), (Words{ 1, 9, 9, 3 }));
}

TEST(TransparentImage, RefusesNegativeExtents)
{
    Canvas source(1, 1);
    Canvas target(1, 1);
    EXPECT_FALSE(TransparentImage(target.Dc(), 0, 0, -1, 1, source.Dc(), 0, 0, 1, 1, 0));
    EXPECT_FALSE(TransparentImage(target.Dc(), 0, 0, 1, 1, source.Dc(), 0, 0, 1, -1, 0));
}

} // namespace
