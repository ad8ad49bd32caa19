#include "platform/linux/display/touch_panel.h"

#include "tests/platform/display/recorded_input.h"

#include <gtest/gtest.h>

namespace {

using namespace cardsong::test;
using cardsong::display::TouchPanel;
using cardsong::host::Viewport;
using Log = std::vector<std::string>;

class Panel : public testing::Test {
protected:
    Panel() { ResetRecordedInput(); }
    const Viewport viewport{ .left = 10, .top = 0, .widthPx = 640, .heightPx = 480 };
    TouchPanel panel;
};

TEST_F(Panel, FeelsTheFirstFingerUntilItLeaves)
{
    panel.FingerDown(7, viewport, 10, 0);
    panel.FingerDown(8, viewport, 50, 50);
    panel.FingerMove(8, viewport, 60, 60);
    panel.FingerMove(7, viewport, 12, 2);
    panel.FingerUp(8, viewport, 60, 60);
    panel.FingerUp(7, viewport, 14, 4);
    EXPECT_EQ(RecordedInput(), (Log{ "down 0,0", "move 1,1", "up 2,2" }));
}

TEST_F(Panel, FeelsASecondFingerWhenTheFirstHasLeft)
{
    panel.FingerDown(7, viewport, 10, 0);
    panel.FingerUp(7, viewport, 10, 0);
    panel.FingerDown(8, viewport, 12, 0);
    panel.FingerUp(8, viewport, 12, 0);
    EXPECT_EQ(RecordedInput(), (Log{ "down 0,0", "up 0,0", "down 1,0", "up 1,0" }));
}

TEST_F(Panel, DoesNotFeelWhatBeginsOutsideIt)
{
    panel.Press(viewport, 9, 0);
    panel.Move(viewport, 20, 20);
    panel.Release(viewport, 20, 20);
    EXPECT_EQ(RecordedInput(), Log{});
}

TEST_F(Panel, KeepsAPressThatSlidesOffAtItsEdge)
{
    panel.Press(viewport, 10, 0);
    panel.Move(viewport, 9, -1);
    panel.Release(viewport, 10000, 10000);
    EXPECT_EQ(RecordedInput(), (Log{ "down 0,0", "move 0,0", "up 319,239" }));
}

TEST_F(Panel, LetsAFingerGoWhereItWasFeltLast)
{
    panel.FingerDown(7, viewport, 10, 0);
    panel.FingerMove(7, viewport, 30, 40);
    panel.FingerUp(8);
    panel.FingerUp(7);
    panel.FingerUp(7);
    panel.AllFingersUp();
    panel.FingerDown(9, viewport, 12, 2);
    panel.AllFingersUp();
    panel.FingerUp(9);
    EXPECT_EQ(RecordedInput(), (Log{ "down 0,0", "move 10,20", "up 10,20", "down 1,1", "up 1,1" }));
}

TEST_F(Panel, TakesASecondPressForTheFirst)
{
    panel.Press(viewport, 10, 0);
    panel.FingerDown(1, viewport, 20, 20);
    panel.Release(viewport, 10, 0);
    panel.FingerUp(1, viewport, 20, 20);
    EXPECT_EQ(RecordedInput(), (Log{ "down 0,0", "up 0,0" }));
}

} // namespace
