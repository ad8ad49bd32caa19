// What mice and touch screens of a Wayland desktop do.
#include "tests/platform/display/wayland_hands.h"

namespace {

using namespace cardsong::test;

TEST_F(WaylandInputs, TheMouseTapsInTheDevicesPixels)
{
    Open();
    PointAt(639.9, 479.9);
    Click(BTN_LEFT, true);
    MoveTo(100.5, 50);
    MoveTo(-5, 1000);
    Click(BTN_LEFT, false);
    EXPECT_EQ(Heard(), (Log{ "down 319,239", "move 50,25", "move 0,239", "up 0,239" }));
}

TEST_F(WaylandInputs, AMouseThatOnlyMovesIsSilent)
{
    Open();
    PointAt(5, 5);
    MoveTo(100, 50);
    Click(BTN_MIDDLE, true);
    Click(BTN_MIDDLE, false);
    With([](const CompositorState& state) { wl_pointer_send_axis(state.pointer, 0, 0, 5000); });
    EXPECT_EQ(Heard(), Log{});
}

TEST_F(WaylandInputs, TheMouseTapsTheSamePlaceOnAScreenWithMorePixels)
{
    Open({ .scale = 2 });
    PointAt(2.5, 1.9);
    Click(BTN_LEFT, true);
    Click(BTN_LEFT, false);
    EXPECT_EQ(Heard(), (Log{ "down 1,0", "up 1,0" }));
}

TEST_F(WaylandInputs, TapsFollowAPictureThatIsTurned)
{
    Open({}, { .scale = 1, .turn = cardsong::host::Turn::Quarter });
    FingerDown(1, 239, 0); // the picture's top left
    FingerMove(1, 239, 10);
    FingerUp(1);
    EXPECT_EQ(Heard(), (Log{ "down 0,0", "move 10,0", "up 10,0" }));
}

TEST_F(WaylandInputs, AMouseThatIsTakenAwayTakesItsPressBack)
{
    Open();
    PointAt(10, 10);
    Click(BTN_LEFT, true);
    With([](const CompositorState& state) { wl_pointer_send_leave(state.pointer, state.NextSerial(), state.surface); });
    EXPECT_EQ(Heard(), (Log{ "down 5,5", "cancel" }));
    PointAt(20, 20);
    Click(BTN_LEFT, true);
    With([](const CompositorState& state) { wl_seat_send_capabilities(state.seat, kTouch); });
    EXPECT_EQ(Heard(), (Log{ "down 5,5", "cancel", "down 10,10", "cancel" }));
    With([](const CompositorState& state) { EXPECT_EQ(state.pointer, nullptr); });
}

TEST_F(WaylandInputs, AMouseThatIsPluggedInLaterTaps)
{
    Open({ .capabilities = 0 });
    With([](const CompositorState& state) {
        EXPECT_EQ(state.pointer, nullptr);
        wl_seat_send_capabilities(state.seat, kPointer);
    });
    EXPECT_TRUE(stage->compositor.Await([](const CompositorState& state) { return state.pointer != nullptr; }));
    PointAt(10, 10);
    Click(BTN_LEFT, true);
    EXPECT_EQ(Heard(), (Log{ "down 5,5" }));
}

TEST_F(WaylandInputs, TheSecondButtonOpensTheDesktopsMenuWhereThereIsNoFrame)
{
    Open({ .without = { "zxdg_decoration_manager_v1" } });
    PointAt(10, 10);
    Click(BTN_RIGHT, true);
    Click(BTN_RIGHT, false);
    EXPECT_EQ(Heard(), Log{});
    With([](const CompositorState& state) { EXPECT_EQ(state.menusAsked, 1); });
}

TEST_F(WaylandInputs, TheSecondButtonDoesNothingInAFrame)
{
    Open();
    PointAt(10, 10);
    Click(BTN_RIGHT, true);
    EXPECT_EQ(Heard(), Log{});
    With([](const CompositorState& state) { EXPECT_EQ(state.menusAsked, 0); });
}

TEST_F(WaylandInputs, TheArrowIsShownInAWindow)
{
    Open();
    PointAt(1, 1);
    EXPECT_EQ(Heard(), Log{});
    With([](const CompositorState& state) {
        EXPECT_EQ(state.cursorsShown, 1);
        EXPECT_EQ(state.cursorsHidden, 0);
    });
}

TEST_F(WaylandInputs, TheArrowIsHiddenOnTheFullScreenUntilTheMouseMoves)
{
    Open({ .windowSize = { 640, 480 } }, kFullScreen);
    PointAt(1, 1);
    EXPECT_EQ(Heard(), Log{});
    With([](const CompositorState& state) {
        EXPECT_EQ(state.cursorsShown, 0);
        EXPECT_EQ(state.cursorsHidden, 1);
    });
    MoveTo(2, 2);
    MoveTo(3, 3);
    EXPECT_EQ(Heard(), Log{});
    With([](const CompositorState& state) { EXPECT_EQ(state.cursorsShown, 1); });
}

TEST_F(WaylandInputs, OnlyTheFirstFingerCounts)
{
    Open();
    FingerDown(4, 320, 240);
    FingerDown(5, 10, 10);
    FingerMove(5, 20, 20);
    FingerUp(5);
    FingerMove(4, 480, 120);
    FingerUp(4);
    EXPECT_EQ(Heard(), (Log{ "down 160,120", "move 240,60", "up 240,60" }));
}

TEST_F(WaylandInputs, ATouchThatTheDesktopTakesForItselfIsTakenBack)
{
    Open();
    FingerDown(4, 320, 240);
    With([](const CompositorState& state) { wl_touch_send_cancel(state.touch); });
    FingerDown(4, 2, 2);
    FingerUp(4);
    EXPECT_EQ(Heard(), (Log{ "down 160,120", "cancel", "down 1,1", "up 1,1" }));
}

TEST_F(WaylandInputs, ATouchScreenThatIsPulledOutTakesItsTouchBack)
{
    Open();
    FingerDown(4, 320, 240);
    With([](const CompositorState& state) { wl_seat_send_capabilities(state.seat, kPointer); });
    EXPECT_EQ(Heard(), (Log{ "down 160,120", "cancel" }));
}

TEST_F(WaylandInputs, ASeatThatIsTakenAwayLetsGoOfEverything)
{
    Open();
    BringKeyboard();
    Key(KEY_RIGHT, true);
    FingerDown(4, 320, 240);
    With([](CompositorState& state) { state.TakeAway("wl_seat"); });
    EXPECT_EQ(Heard(), (Log{ "key+ 39", "down 160,120", "key- 39", "cancel" }));
}

TEST_F(WaylandInputs, AFingerBesideThePictureDoesNotKeepOthersOff)
{
    Open({ .windowSize = { 800, 480 } }); // black at both sides
    FingerDown(1, 79, 240);
    FingerDown(2, 80, 240);
    FingerMove(1, 400, 240);
    FingerUp(1);
    FingerUp(2);
    EXPECT_EQ(Heard(), (Log{ "down 0,120", "up 0,120" }));
}

TEST_F(WaylandInputs, MouseAndFingerDoNotEndEachOthersPress)
{
    Open();
    PointAt(10, 10);
    FingerDown(4, 320, 240);
    Click(BTN_LEFT, true);
    MoveTo(20, 20);
    Click(BTN_LEFT, false);
    With([](const CompositorState& state) { wl_pointer_send_leave(state.pointer, state.NextSerial(), state.surface); });
    FingerUp(4);
    EXPECT_EQ(Heard(), (Log{ "down 160,120", "up 160,120" }));
    PointAt(10, 10);
    Click(BTN_LEFT, true);
    FingerDown(4, 320, 240);
    FingerMove(4, 100, 100);
    With([](const CompositorState& state) { wl_touch_send_cancel(state.touch); });
    Click(BTN_LEFT, false);
    EXPECT_EQ(Heard(), (Log{ "down 160,120", "up 160,120", "down 5,5", "up 5,5" }));
}

TEST_F(WaylandInputs, FingersBeforeThereIsASizeAreHarmless)
{
    stage = std::make_unique<WaylandStage>(CompositorOffer{ .configures = false }, kInWindow);
    stage->AwaitAnswer();
    FingerDown(1, 100, 100);
    FingerMove(1, 7, 7);
    FingerUp(1);
    PointAt(7, 7);
    EXPECT_EQ(Heard(), Log{});
}

TEST_F(WaylandInputs, FingersAnywhereInTheWorldAreHarmless)
{
    Open();
    With([](const CompositorState& state) {
        wl_touch_send_down(state.touch, 0, 0, state.surface, -1, INT32_MIN, INT32_MAX);
        wl_touch_send_motion(state.touch, 0, -1, INT32_MAX, INT32_MIN);
        wl_touch_send_up(state.touch, 0, 0, -7);
        wl_touch_send_up(state.touch, 0, 0, -1);
    });
    EXPECT_EQ(Heard(), Log{});
}

} // namespace
