#include "gui/paint_buffer.h"

#include "tests/gif/gif_builder.h"
#include "tests/gui/window_fixture.h"

using namespace cardsong::test;

namespace {

void Fill(HDC context, const RECT& rect, COLORREF color)
{
    const UniqueBrush brush(CreateSolidBrush(color));
    FillRect(context, &rect, brush.Get());
}

} // namespace

TEST(PaintBuffer, WhatIsComposedInItComesToTheTargetAtOnce)
{
    const Picture target; // blue
    const PaintBuffer buffer(target.Context(), 6, 4);
    Fill(buffer.Context(), { 0, 0, 6, 4 }, RGB(255, 0, 0));
    Fill(buffer.Context(), { 5, 3, 6, 4 }, RGB(0, 255, 0));
    EXPECT_EQ(target.At(0, 0), kBlue565);
    buffer.CopyTo(target.Context());
    EXPECT_EQ(target.At(0, 0), kRed565);
    EXPECT_EQ(target.At(5, 3), kGreen565);
    EXPECT_EQ(target.At(6, 0), kBlue565);
    EXPECT_EQ(target.At(0, 4), kBlue565);
}

TEST(PaintBuffer, ABufferLargerThanItsTargetIsCutAtTheEdge)
{
    const Picture target(RGB(0, 0, 255), 3, 3);
    const PaintBuffer buffer(target.Context(), 480, 272);
    Fill(buffer.Context(), { 0, 0, 480, 272 }, RGB(255, 0, 0));
    buffer.CopyTo(target.Context());
    EXPECT_EQ(target.Count(kRed565, { 0, 0, 3, 3 }), 9);
}

TEST(PaintBuffer, KeepsWhatItHoldsForTheNextPaint)
{
    const Picture first;
    const Picture second;
    const PaintBuffer buffer(first.Context(), 2, 2);
    Fill(buffer.Context(), { 0, 0, 2, 2 }, RGB(255, 0, 0));
    buffer.CopyTo(first.Context());
    buffer.CopyTo(second.Context());
    EXPECT_EQ(second.At(1, 1), kRed565);
}
