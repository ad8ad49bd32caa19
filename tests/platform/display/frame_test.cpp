#include "platform/ce.h"
#include "platform/linux/display/frame.h"
#include "tests/platform/display/screen_painter.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using namespace cardsong::display;
using cardsong::test::ScreenPainter;

std::uint16_t& PixelAt(Frame& frame, int x, int y)
{
    return frame[static_cast<std::size_t>(y) * kFrameWidthPx + static_cast<std::size_t>(x)];
}

TEST(ChangedRows, EqualFramesHaveNone)
{
    const auto frame = std::make_unique<Frame>();
    EXPECT_TRUE(FindChangedRows(*frame, *frame).empty());
}

TEST(ChangedRows, NeighboursAreOneRange)
{
    const auto before = std::make_unique<Frame>();
    const auto after = std::make_unique<Frame>(*before);
    PixelAt(*after, 0, 0) = 1;
    PixelAt(*after, 319, 10) = 1;
    PixelAt(*after, 5, 11) = 1;
    PixelAt(*after, 0, 239) = 1;
    const std::vector<RowRange> expected = { { 0, 1 }, { 10, 12 }, { 239, 240 } };
    EXPECT_EQ(FindChangedRows(*before, *after), expected);
}

TEST(FrameBox, GivesAFrameOnce)
{
    FrameBox box;
    const auto frame = std::make_unique<Frame>();
    EXPECT_FALSE(box.Take(*frame));
    EXPECT_TRUE(box.Post());
    EXPECT_TRUE(box.Take(*frame));
    EXPECT_FALSE(box.Take(*frame));
}

TEST(FrameBox, AsksForOneWakeUpHoweverManyFramesCome)
{
    ScreenPainter painter;
    FrameBox box;
    EXPECT_TRUE(box.Post());
    painter.Fill({ 0, 0, 1, 1 }, RGB(255, 255, 255));
    EXPECT_FALSE(box.Post());
    const auto frame = std::make_unique<Frame>();
    ASSERT_TRUE(box.Take(*frame));
    EXPECT_EQ(PixelAt(*frame, 0, 0), 0xFFFF); // the newest
}

TEST(FrameBox, AnUntouchedScreenIsNoNewFrame)
{
    ScreenPainter painter;
    FrameBox box;
    box.Post();
    const auto frame = std::make_unique<Frame>();
    box.Take(*frame);
    EXPECT_FALSE(box.Post());
    EXPECT_FALSE(box.Take(*frame));
    painter.Fill({ 0, 0, 1, 1 }, RGB(255, 255, 255));
    EXPECT_TRUE(box.Post());
}

TEST(FrameBox, ThePictureDrawnOnceMoreIsNoNewFrame)
{
    ScreenPainter painter;
    FrameBox box;
    painter.Fill({ 0, 0, 320, 240 }, RGB(255, 255, 255));
    box.Post();
    const auto frame = std::make_unique<Frame>();
    box.Take(*frame);
    painter.Fill({ 0, 0, 320, 240 }, RGB(255, 255, 255));
    EXPECT_FALSE(box.Post());
    EXPECT_FALSE(box.Take(*frame));
    painter.Fill({ 319, 239, 320, 240 }, RGB(0, 0, 0));
    EXPECT_TRUE(box.Post());
    ASSERT_TRUE(box.Take(*frame));
    EXPECT_EQ(PixelAt(*frame, 318, 239), 0xFFFF);
    EXPECT_EQ(PixelAt(*frame, 319, 239), 0);
}

TEST(FrameBox, AnEqualPictureLeavesTheOneThatWaits)
{
    ScreenPainter painter;
    FrameBox box;
    box.Post();
    const auto frame = std::make_unique<Frame>();
    box.Take(*frame);
    painter.Fill({ 0, 0, 1, 1 }, RGB(255, 255, 255));
    EXPECT_TRUE(box.Post());
    painter.Fill({ 0, 0, 1, 1 }, RGB(255, 255, 255));
    EXPECT_FALSE(box.Post());
    ASSERT_TRUE(box.Take(*frame));
    EXPECT_EQ(PixelAt(*frame, 0, 0), 0xFFFF);
}

TEST(FrameBox, KeepsTheScreenAsItWasWhenPosted)
{
    ScreenPainter painter;
    FrameBox box;
    box.Post();
    painter.Fill({ 0, 0, 1, 1 }, RGB(255, 255, 255));
    const auto frame = std::make_unique<Frame>();
    ASSERT_TRUE(box.Take(*frame));
    EXPECT_EQ(PixelAt(*frame, 0, 0), 0);
}

} // namespace
