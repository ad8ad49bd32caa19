#include "platform/linux/display/touch_panel.h"

#include "tests/platform/display/recorded_input.h"

#include <gtest/gtest.h>

namespace {

using namespace cardsong::test;
using cardsong::display::TouchPanel;
using cardsong::host::Viewport;
using Log = std::vector<std::string>;

using cardsong::display::Hand;

// Devices.
constexpr char kMouse = 'm';
constexpr char kTouchScreen = 't';
constexpr char kOtherTouchScreen = 'o';

Hand Finger(std::int64_t number, const char& screen = kTouchScreen)
{
    return { &screen, number };
}

class Panel : public testing::Test {
protected:
    Panel() { ResetRecordedInput(); }
    const Viewport viewport{ .left = 10, .top = 0, .widthPx = 640, .heightPx = 480 };
    const Hand mouse{ &kMouse };
    TouchPanel panel;
};

TEST_F(Panel, FeelsTheFirstFingerUntilItLeaves)
{
    panel.Down(Finger(7), viewport, 10, 0);
    panel.Down(Finger(8), viewport, 50, 50);
    panel.Move(Finger(8), viewport, 60, 60);
    panel.Move(Finger(7), viewport, 12, 2);
    panel.Up(Finger(8), viewport, 60, 60);
    panel.Up(Finger(7), viewport, 14, 4);
    EXPECT_EQ(RecordedInput(), (Log{ "down 0,0", "move 1,1", "up 2,2" }));
}

TEST_F(Panel, FeelsASecondFingerWhenTheFirstHasLeft)
{
    panel.Down(Finger(7), viewport, 10, 0);
    panel.Up(Finger(7), viewport, 10, 0);
    panel.Down(Finger(8), viewport, 12, 0);
    panel.Up(Finger(8), viewport, 12, 0);
    EXPECT_EQ(RecordedInput(), (Log{ "down 0,0", "up 0,0", "down 1,0", "up 1,0" }));
}

TEST_F(Panel, DoesNotFeelWhatBeginsOutsideIt)
{
    for (const Hand& hand : { mouse, Finger(7) }) {
        panel.Down(hand, viewport, 9, 0);
        panel.Move(hand, viewport, 20, 20);
        panel.Up(hand, viewport, 20, 20);
    }
    EXPECT_EQ(RecordedInput(), Log{});
}

TEST_F(Panel, FeelsAFingerWhileAnotherRestsInTheBlackAroundThePicture)
{
    panel.Down(Finger(7), viewport, 9, 0);
    panel.Down(Finger(8), viewport, 10, 0);
    panel.Move(Finger(7), viewport, 20, 20);
    panel.Up(Finger(7), viewport, 20, 20);
    panel.Up(Finger(8), viewport, 12, 0);
    EXPECT_EQ(RecordedInput(), (Log{ "down 0,0", "up 1,0" }));
}

TEST_F(Panel, KeepsAPressThatSlidesOffAtItsEdge)
{
    panel.Down(mouse, viewport, 10, 0);
    panel.Move(mouse, viewport, 9, -1);
    panel.Up(mouse, viewport, 10000, 10000);
    EXPECT_EQ(RecordedInput(), (Log{ "down 0,0", "move 0,0", "up 319,239" }));
}

TEST_F(Panel, LetsAFingerGoWhereItWasFeltLast)
{
    panel.Down(Finger(7), viewport, 10, 0);
    panel.Move(Finger(7), viewport, 30, 40);
    panel.Up(Finger(8));
    panel.Up(Finger(7));
    panel.Up(Finger(7));
    EXPECT_EQ(RecordedInput(), (Log{ "down 0,0", "move 10,20", "up 10,20" }));
}

TEST_F(Panel, TakesBackTheTouchOfADeviceThatTellsNoMore)
{
    panel.Down(Finger(7), viewport, 10, 0);
    panel.Cancel(&kTouchScreen);
    panel.Cancel(&kTouchScreen);
    panel.Up(Finger(7), viewport, 10, 0);
    panel.Down(Finger(7), viewport, 12, 2);
    panel.Up(Finger(7));
    EXPECT_EQ(RecordedInput(), (Log{ "down 0,0", "cancel", "down 1,1", "up 1,1" }));
}

TEST_F(Panel, FeelsNothingOfTheMouseWhileAFingerTouchesIt)
{
    panel.Down(Finger(0), viewport, 10, 0);
    panel.Down(mouse, viewport, 20, 20);
    panel.Move(mouse, viewport, 30, 30);
    panel.Up(mouse, viewport, 30, 30);
    panel.Cancel(&kMouse);
    panel.Move(Finger(0), viewport, 12, 2);
    panel.Up(Finger(0));
    EXPECT_EQ(RecordedInput(), (Log{ "down 0,0", "move 1,1", "up 1,1" }));
}

TEST_F(Panel, FeelsNothingOfFingersWhileTheMousePresses)
{
    panel.Down(mouse, viewport, 10, 0);
    panel.Down(Finger(0), viewport, 20, 20);
    panel.Move(Finger(0), viewport, 30, 30);
    panel.Up(Finger(0), viewport, 30, 30);
    panel.Cancel(&kTouchScreen);
    panel.Move(mouse, viewport, 12, 2);
    panel.Up(mouse, viewport, 14, 4);
    EXPECT_EQ(RecordedInput(), (Log{ "down 0,0", "move 1,1", "up 2,2" }));
}

TEST_F(Panel, TellsTheFingersOfTwoTouchScreensApart)
{
    panel.Down(Finger(7), viewport, 10, 0);
    panel.Down(Finger(7, kOtherTouchScreen), viewport, 20, 20);
    panel.Up(Finger(7, kOtherTouchScreen));
    panel.Cancel(&kOtherTouchScreen);
    panel.Up(Finger(7));
    EXPECT_EQ(RecordedInput(), (Log{ "down 0,0", "up 0,0" }));
}

} // namespace
