// The pixels of the window on a Wayland desktop.
#include "tests/platform/display/wayland_stage.h"

#include "platform/host/viewport.h"

#include <random>
#include <wayland-server.h>
#include <xdg-shell-server-protocol.h>

namespace {

using namespace cardsong::test;
using cardsong::display::DisplayOptions;

constexpr std::uint32_t kBlue = 0x0000FF;
constexpr std::uint32_t kRed = 0xFF0000;
const std::vector<std::uint32_t> kActivated = { XDG_TOPLEVEL_STATE_ACTIVATED };

TEST(WaylandWindow, AppearsWithItsFirstFrameAndNotBefore)
{
    WaylandStage stage;
    stage.AwaitAnswer();
    stage.compositor.With([](const CompositorState& state) { EXPECT_EQ(state.commits, 0); });
    stage.Appear();
    stage.compositor.With([](const CompositorState& state) {
        EXPECT_EQ(state.commits, 1);
        EXPECT_EQ(state.screen.At(0, 0), kBlue);
    });
}

TEST(WaylandWindow, HasTheScaleAskedFor)
{
    WaylandStage stage({}, { 3, false });
    stage.Appear();
    stage.compositor.With([](const CompositorState& state) {
        EXPECT_EQ(state.buffer.widthPx, 960);
        EXPECT_EQ(state.buffer.heightPx, 720);
        EXPECT_EQ(state.bufferScale, 1);
    });
}

TEST(WaylandWindow, IsComfortablyLargeOnTheDesktopWhenNoScaleIsAskedFor)
{
    WaylandStage stage({ .outputWidthPx = 1920, .outputHeightPx = 1200 }, {});
    stage.Appear();
    const SIZE size = cardsong::host::ComfortableSize(1920, 1200);
    stage.compositor.With([size](const CompositorState& state) {
        EXPECT_EQ(state.buffer.widthPx, size.cx);
        EXPECT_EQ(state.buffer.heightPx, size.cy);
    });
}

TEST(WaylandWindow, TurnsThePictureOnAScreenThatIsTurnedItself)
{
    // A panel of 320 x 240 that stands upright: 240 x 320 as its user sees it.
    WaylandStage stage(
        { .outputWidthPx = 320, .outputHeightPx = 240, .outputTransform = 1, .windowSize = { 240, 320 } }, {});
    stage.Paint(RGB(0, 0, 255));
    stage.Paint(RGB(255, 0, 0), { 0, 0, 1, 1 });
    EXPECT_TRUE(stage.compositor.Await(
        [](const CompositorState& state) { return state.commits > 0 && state.screen.At(239, 0) == kRed; }));
    stage.compositor.With([](const CompositorState& state) {
        EXPECT_EQ(state.buffer.widthPx, 240);
        EXPECT_EQ(state.buffer.heightPx, 320);
        EXPECT_EQ(state.screen.At(238, 0), kBlue);
        EXPECT_EQ(state.screen.At(0, 319), kBlue);
    });
}

TEST(WaylandWindow, ShowsThePictureUprightWhereTheScreenHasThePixelsForIt)
{
    // 240 x 320 units of two pixels each: too narrow for the picture in units, and not in pixels.
    WaylandStage stage({ .outputWidthPx = 480, .outputHeightPx = 640, .scale = 2, .windowSize = { 240, 320 } }, {});
    stage.Paint(RGB(255, 0, 0));
    stage.AwaitCommits(1);
    stage.compositor.With([](const CompositorState& state) {
        EXPECT_EQ(state.buffer.widthPx, 480);
        EXPECT_EQ(state.buffer.heightPx, 640);
        EXPECT_EQ(state.screen.At(80, 200), kRed);
        EXPECT_EQ(state.screen.At(399, 439), kRed);
        EXPECT_EQ(state.screen.At(79, 200), 0U);
        EXPECT_EQ(state.screen.At(80, 199), 0U);
        EXPECT_EQ(state.screen.At(399, 440), 0U);
    });
}

TEST(WaylandWindow, TurnsThePictureOnAScreenWithTooFewPixelsWhateverTheirScale)
{
    WaylandStage stage({ .outputWidthPx = 240, .outputHeightPx = 320, .scale = 2, .windowSize = { 120, 160 } }, {});
    stage.Paint(RGB(255, 0, 0));
    stage.AwaitCommits(1);
    stage.compositor.With([](const CompositorState& state) {
        EXPECT_EQ(state.screen.At(0, 0), kRed);
        EXPECT_EQ(state.screen.At(239, 319), kRed);
    });
}

TEST(WaylandWindow, ObeysATurnThatIsAskedFor)
{
    WaylandStage stage({}, { .scale = 1, .turn = cardsong::host::Turn::Half });
    stage.Appear();
    stage.Paint(RGB(255, 0, 0), { 0, 0, 1, 1 });
    stage.AwaitCommits(2);
    stage.compositor.With([](const CompositorState& state) {
        EXPECT_EQ(state.screen.At(319, 239), kRed);
        EXPECT_EQ(state.screen.At(0, 0), kBlue);
    });
}

TEST(WaylandWindow, EnlargesEveryPixelOfAFrame)
{
    WaylandStage stage;
    stage.Paint(RGB(255, 0, 0), { 1, 1, 2, 2 });
    stage.AwaitCommits(1);
    stage.compositor.With([](const CompositorState& state) {
        for (const POINT at : { POINT{ 2, 2 }, POINT{ 3, 2 }, POINT{ 2, 3 }, POINT{ 3, 3 } })
            EXPECT_EQ(state.screen.At(at.x, at.y), kRed) << at.x << "," << at.y;
        for (const POINT at : { POINT{ 1, 2 }, POINT{ 4, 2 }, POINT{ 2, 1 }, POINT{ 2, 4 } })
            EXPECT_EQ(state.screen.At(at.x, at.y), 0U) << at.x << "," << at.y;
    });
}

TEST(WaylandWindow, SendsOnlyTheRowsThatDiffer)
{
    WaylandStage stage;
    stage.Appear();
    stage.Paint(RGB(255, 0, 0), { 0, 10, 5, 12 });
    stage.AwaitCommits(2);
    stage.compositor.With([](const CompositorState& state) {
        ASSERT_EQ(state.damage.size(), 1U);
        EXPECT_EQ(state.damage[0].left, 0);
        EXPECT_EQ(state.damage[0].top, 20);
        EXPECT_EQ(state.damage[0].right, 640);
        EXPECT_EQ(state.damage[0].bottom, 24);
    });
}

class WaylandReleases : public testing::TestWithParam<ReleaseBuffers> {};

TEST_P(WaylandReleases, EveryFrameArrivesWholeInWhicheverBuffer)
{
    WaylandStage stage({ .releases = GetParam() }, { 1, false });
    stage.Appear();
    std::minstd_rand random(7);
    for (int round = 1; round <= 60; ++round) {
        const RECT part = { 0, static_cast<LONG>(random() % 200), 320, static_cast<LONG>(201 + random() % 39) };
        const auto green = static_cast<BYTE>(round * 4);
        stage.Paint(RGB(0, green, 0), part);
        const std::uint32_t shown = green << 8;
        EXPECT_TRUE(stage.compositor.Await([&](const CompositorState& state) {
            return (state.screen.At(5, static_cast<int>(part.top)) & 0xFC00) == (shown & 0xFC00);
        })) << round;
        stage.compositor.With([&](const CompositorState& state) {
            EXPECT_EQ(state.screen.pixels, state.buffer.pixels) << round;
            EXPECT_EQ(state.screen.At(319, static_cast<int>(part.bottom) - 1) & 0xFC00, shown & 0xFC00) << round;
            EXPECT_FALSE(state.wasHeldBufferChanged) << round;
        });
    }
}

INSTANTIATE_TEST_SUITE_P(Of, WaylandReleases, testing::Values(ReleaseBuffers::AtOnce, ReleaseBuffers::WhenReplaced));

TEST(WaylandWindow, WaitsForACompositorThatKeepsAllBuffersAndThenShowsTheNewestFrame)
{
    WaylandStage stage({ .releases = ReleaseBuffers::Never });
    stage.Appear();
    stage.Paint(RGB(255, 0, 0));
    stage.AwaitCommits(2);
    stage.Paint(RGB(0, 255, 0));
    stage.AwaitCommits(3);
    stage.Paint(RGB(255, 0, 0));
    stage.Paint(RGB(255, 255, 255));
    stage.AwaitAnswer();
    stage.compositor.With([](CompositorState& state) {
        EXPECT_EQ(state.commits, 3);
        EXPECT_EQ(state.heldBuffers.size(), 3U);
        EXPECT_FALSE(state.wasHeldBufferChanged);
        state.Release();
    });
    stage.AwaitCommits(4);
    stage.compositor.With([](const CompositorState& state) { EXPECT_EQ(state.screen.At(9, 9), 0xFFFFFFU); });
}

TEST(WaylandWindow, ShowsAFrameOnlyWhenTheCompositorCallsForIt)
{
    WaylandStage stage({ .callsForFrames = false });
    stage.Appear();
    stage.Paint(RGB(0, 255, 0));
    stage.Paint(RGB(255, 0, 0));
    stage.AwaitAnswer();
    stage.compositor.With([](CompositorState& state) {
        EXPECT_EQ(state.commits, 1);
        EXPECT_EQ(state.frameCalls.size(), 1U);
        state.CallForFrame();
    });
    stage.AwaitCommits(2);
    stage.compositor.With([](const CompositorState& state) { EXPECT_EQ(state.screen.At(0, 0), kRed); });
}

TEST(WaylandWindow, TakesTheSizeThatTheDesktopAsksForAndIsBlackAroundThePicture)
{
    WaylandStage stage;
    stage.Appear();
    std::uint32_t serial = 0;
    stage.compositor.With([&](CompositorState& state) { serial = state.Configure({ 800, 500 }, kActivated); });
    stage.AwaitCommits(2);
    stage.compositor.With([serial](const CompositorState& state) {
        EXPECT_EQ(state.ackedSerial, serial);
        EXPECT_EQ(state.buffer.widthPx, 800);
        EXPECT_EQ(state.buffer.heightPx, 500);
        EXPECT_EQ(state.screen.pixels, state.buffer.pixels);
        EXPECT_EQ(state.screen.At(79, 10), 0U);
        EXPECT_EQ(state.screen.At(80, 9), 0U);
        EXPECT_EQ(state.screen.At(80, 10), kBlue);
        EXPECT_EQ(state.screen.At(719, 489), kBlue);
        EXPECT_EQ(state.screen.At(720, 489), 0U);
        EXPECT_EQ(state.screen.At(719, 490), 0U);
    });
}

TEST(WaylandWindow, TakesANewSizeWhileTheCompositorCallsForNoFrame)
{
    WaylandStage stage({ .callsForFrames = false, .releases = ReleaseBuffers::Never });
    stage.Appear();
    stage.compositor.With([&](CompositorState& state) { state.Configure({ 640, 500 }, kActivated); });
    stage.AwaitCommits(2);
    stage.compositor.With([](const CompositorState& state) {
        EXPECT_EQ(state.buffer.heightPx, 500);
        EXPECT_EQ(state.frameCalls.size(), 1U);
    });
}

TEST(WaylandWindow, LikesItsOwnSizeWhereTheDesktopAsksForNoneOrForNonsense)
{
    WaylandStage stage({ .windowSize = { -5, -2000000000 } });
    stage.Appear();
    stage.compositor.With([](const CompositorState& state) {
        EXPECT_EQ(state.buffer.widthPx, 640);
        EXPECT_EQ(state.buffer.heightPx, 480);
    });
}

TEST(WaylandWindow, TakesNoMoreMemoryThanAScreenCouldNeed)
{
    WaylandStage stage({ .windowSize = { 2000000000, 3 } });
    stage.Appear();
    stage.compositor.With([](const CompositorState& state) {
        EXPECT_EQ(state.buffer.widthPx, 8192);
        EXPECT_EQ(state.buffer.heightPx, 3);
    });
}

TEST(WaylandWindow, HasFewerPixelsToAUnitWhereItWouldBeTooLarge)
{
    struct Case {
        SIZE size;
        int scaleOfScreen;
        int scale;
    };
    for (const auto& [size, scaleOfScreen, scale] : { Case{ { 4096, 3 }, 2, 2 }, Case{ { 4097, 3 }, 2, 1 },
                                                      Case{ { 3, 3000 }, 3, 2 }, Case{ { 8192, 3 }, 3, 1 } }) {
        WaylandStage stage({ .scale = scaleOfScreen, .windowSize = size });
        stage.Appear();
        stage.compositor.With([&, size = size, scale = scale](const CompositorState& state) {
            EXPECT_EQ(state.bufferScale, scale) << size.cx;
            EXPECT_EQ(state.buffer.widthPx, size.cx * scale);
            EXPECT_EQ(state.buffer.heightPx, size.cy * scale);
        });
    }
}

TEST(WaylandWindow, SurvivesTheSmallestSizes)
{
    WaylandStage stage;
    stage.Appear();
    int commits = 1;
    for (const SIZE size : { SIZE{ 1, 1 }, SIZE{ 1, 700 }, SIZE{ 319, 239 }, SIZE{ 320, 240 } }) {
        stage.compositor.With([&](CompositorState& state) { state.Configure(size, kActivated); });
        stage.AwaitCommits(++commits);
        stage.compositor.With([&](const CompositorState& state) {
            EXPECT_EQ(state.buffer.widthPx, size.cx);
            EXPECT_EQ(state.buffer.heightPx, size.cy);
        });
    }
}

TEST(WaylandWindow, HasAllPixelsOfAScreenWithMoreOfThem)
{
    WaylandStage stage({ .scale = 2 });
    stage.Appear();
    stage.Paint(RGB(255, 0, 0), { 1, 0, 2, 1 });
    stage.AwaitCommits(2);
    stage.compositor.With([](const CompositorState& state) {
        EXPECT_EQ(state.bufferScale, 2);
        EXPECT_EQ(state.buffer.widthPx, 1280);
        EXPECT_EQ(state.buffer.heightPx, 960);
        EXPECT_EQ(state.screen.At(3, 0), kBlue);
        EXPECT_EQ(state.screen.At(4, 0), kRed);
        EXPECT_EQ(state.screen.At(7, 3), kRed);
        EXPECT_EQ(state.screen.At(8, 0), kBlue);
    });
}

TEST(WaylandWindow, FollowsAScreenWhoseScaleChanges)
{
    WaylandStage stage;
    stage.Appear();
    stage.compositor.With([](const CompositorState& state) {
        wl_surface_send_enter(state.surface, state.output);
        wl_output_send_scale(state.output, 3);
        wl_output_send_done(state.output);
    });
    stage.AwaitCommits(2);
    stage.compositor.With([](const CompositorState& state) {
        EXPECT_EQ(state.bufferScale, 3);
        EXPECT_EQ(state.buffer.widthPx, 1920);
        EXPECT_EQ(state.screen.pixels, state.buffer.pixels);
    });
}

TEST(WaylandWindow, GoesOnWhenItsScreenIsPulledOut)
{
    WaylandStage stage({ .scale = 2 });
    stage.Appear();
    stage.compositor.With([](CompositorState& state) {
        wl_surface_send_enter(state.surface, state.output);
        state.TakeAway("wl_output");
    });
    stage.AwaitCommits(2);
    stage.compositor.With([](const CompositorState& state) {
        EXPECT_EQ(state.output, nullptr);
        EXPECT_EQ(state.bufferScale, 1);
        EXPECT_EQ(state.buffer.widthPx, 640);
    });
    stage.Paint(RGB(255, 0, 0));
    stage.AwaitCommits(3);
}

TEST(WaylandWindow, TakesTheScaleOfAScreenThatIsPluggedInForTheOneThatShowedIt)
{
    WaylandStage stage({ .scale = 2 });
    stage.Appear();
    stage.compositor.With([](CompositorState& state) {
        wl_surface_send_enter(state.surface, state.output);
        state.TakeAway("wl_output");
    });
    stage.AwaitCommits(2);
    stage.compositor.With([](CompositorState& state) { state.PlugIn(3); });
    stage.AwaitCommits(3);
    stage.compositor.With([](const CompositorState& state) { EXPECT_EQ(state.bufferScale, 3); });
}

TEST(WaylandWindow, IsNotShownOnAScreenThatIsGone)
{
    WaylandStage stage({ .scale = 2 });
    stage.Appear();
    stage.compositor.Hang(); // it does not hear that the display has let go of the screen
    stage.compositor.With([](CompositorState& state) {
        state.TakeAway("wl_output");
        wl_touch_send_down(state.touch, 0, 0, state.surface, 1, 0, 0);
    });
    EXPECT_EQ(WaitForInput(stage.before + 1).back(), "down 0,0"); // and so it has
    stage.compositor.With([](CompositorState& state) {
        wl_surface_send_enter(state.surface, state.output);
        wl_surface_send_leave(state.surface, state.output);
        wl_surface_send_enter(state.surface, state.output);
        state.PlugIn(3);
    });
    stage.compositor.WakeUp();
    EXPECT_TRUE(stage.compositor.Await([](const CompositorState& state) { return state.bufferScale == 3; }));
}

TEST(WaylandWindow, HasTheScaleOfTheScreensThatShowIt)
{
    WaylandStage stage({ .scale = 2 });
    stage.Appear();
    wl_resource* first = nullptr;
    stage.compositor.With([&](CompositorState& state) {
        first = state.output;
        wl_surface_send_enter(state.surface, first);
        state.PlugIn(3);
    });
    EXPECT_TRUE(stage.compositor.Await(
        [&](const CompositorState& state) { return state.output != nullptr && state.output != first; }));
    stage.AwaitAnswer();
    stage.AwaitAnswer(); // what the display did about it has arrived
    stage.compositor.With([](const CompositorState& state) {
        EXPECT_EQ(state.bufferScale, 2);
        wl_surface_send_enter(state.surface, state.output);
    });
    stage.AwaitCommits(2);
    stage.compositor.With([](const CompositorState& state) {
        EXPECT_EQ(state.bufferScale, 3);
        wl_surface_send_leave(state.surface, state.output);
    });
    stage.AwaitCommits(3);
    stage.compositor.With([](const CompositorState& state) { EXPECT_EQ(state.bufferScale, 2); });
}

TEST(WaylandWindow, CutsAScaleThatNoScreenHas)
{
    for (const auto& [told, taken] : { std::pair{ 1000000, 8 }, std::pair{ 0, 1 }, std::pair{ -3, 1 } }) {
        WaylandStage stage({ .scale = told }, { 1, false });
        stage.Appear();
        stage.compositor.With([expected = taken](const CompositorState& state) {
            EXPECT_EQ(state.bufferScale, expected);
            EXPECT_EQ(state.buffer.widthPx, 320 * expected);
        });
    }
}

} // namespace
