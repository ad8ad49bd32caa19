#include "platform/linux/display/headless_display.h"
#include "tests/platform/display/recorded_input.h"
#include "tests/platform/display/screen_painter.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using namespace cardsong::test;
using cardsong::display::HeadlessDisplay;

class Headless : public testing::Test {
protected:
    Headless()
    {
        ResetRecordedInput();
        EXPECT_EQ(display->Start(), "");
    }
    ScreenPainter painter;
    std::unique_ptr<HeadlessDisplay> display = std::make_unique<HeadlessDisplay>();
};

TEST_F(Headless, ShowsAFrameWhenItIsFinished)
{
    painter.Fill({ 3, 0, 4, 1 }, RGB(255, 0, 0));
    EXPECT_EQ(display->LastFrame()[3], 0);
    ASSERT_TRUE(PresentFrame());
    EXPECT_EQ(display->LastFrame()[3], 0xF800);
    EXPECT_EQ(display->FrameCount(), 1U);
}

TEST_F(Headless, DoesNotCountAFrameLikeTheOneBefore)
{
    painter.Fill({ 0, 0, 1, 1 }, RGB(255, 0, 0));
    PresentFrame();
    painter.Fill({ 0, 0, 1, 1 }, RGB(255, 0, 0));
    PresentFrame();
    EXPECT_EQ(display->FrameCount(), 1U);
}

TEST_F(Headless, HearsNothingAfterItsEnd)
{
    display->Stop();
    EXPECT_FALSE(PresentFrame());
}

TEST_F(Headless, LeavesTheNextDisplayAloneAfterItsEnd)
{
    display->Stop();
    HeadlessDisplay next;
    EXPECT_EQ(next.Start(), "");
    display->Stop();
    EXPECT_TRUE(PresentFrame());
}

TEST_F(Headless, IsTheActiveDisplay)
{
    EXPECT_EQ(RecordedInput(), std::vector<std::string>{ "active" });
}

} // namespace
