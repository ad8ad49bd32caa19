// The window as a Wayland desktop knows it.
#include "tests/platform/display/wayland_stage.h"

#include <filesystem>
#include <wayland-server.h>
#include <xdg-shell-server-protocol.h>

namespace {

using namespace cardsong::test;

TEST(WaylandTopLevel, TellsTheDesktopItsNameIconSmallestSizeAndWishForAFrame)
{
    WaylandStage stage;
    stage.Appear();
    stage.compositor.With([](const CompositorState& state) {
        EXPECT_EQ(state.title, "Cardsong");
        EXPECT_EQ(state.appId, "cardsong");
        EXPECT_EQ(state.smallest.cx, 320);
        EXPECT_EQ(state.smallest.cy, 240);
        EXPECT_TRUE(state.wantsFrame);
        EXPECT_FALSE(state.wantsFullScreen);
    });
}

TEST(WaylandTopLevel, AsksForTheFullScreen)
{
    WaylandStage stage({}, { 0, true });
    stage.Appear();
    stage.compositor.With([](const CompositorState& state) { EXPECT_TRUE(state.wantsFullScreen); });
}

TEST(WaylandTopLevel, AnswersTheDesktopThatMerelyChangesItsState)
{
    WaylandStage stage;
    stage.Appear();
    std::uint32_t serial = 0;
    stage.compositor.With([&](CompositorState& state) { serial = state.Configure({ 640, 480 }, {}); });
    EXPECT_TRUE(stage.compositor.Await([&](const CompositorState& state) { return state.ackedSerial == serial; }));
    EXPECT_EQ(stage.Heard(), Log{ "inactive" });
    stage.compositor.With([](const CompositorState& state) { EXPECT_EQ(state.commits, 1); });
}

TEST(WaylandTopLevel, ItsCloseButtonIsTheExitKey)
{
    WaylandStage stage;
    stage.Appear();
    stage.compositor.With([](const CompositorState& state) { xdg_toplevel_send_close(state.topLevel); });
    EXPECT_EQ(stage.Heard(), Log{ "exit key" });
}

TEST(WaylandTopLevel, IsAskedToTheFrontWithTheProofOfTheLastPress)
{
    WaylandStage stage;
    stage.Appear();
    std::uint32_t serial = 0;
    stage.compositor.With([&](const CompositorState& state) {
        serial = state.NextSerial();
        wl_touch_send_down(state.touch, serial, 0, state.surface, 1, 0, 0);
    });
    stage.AwaitAnswer();
    EXPECT_TRUE(AskToRaise());
    EXPECT_TRUE(stage.compositor.Await([](const CompositorState& state) { return !state.activations.empty(); }));
    stage.compositor.With([serial](const CompositorState& state) {
        EXPECT_EQ(state.activations, Log{ "proof" });
        EXPECT_EQ(state.activationSerial, serial);
        EXPECT_EQ(state.activationToken, nullptr);
    });
}

TEST(WaylandTopLevel, ComesToTheFrontForWhoeverStartedIt)
{
    setenv("XDG_ACTIVATION_TOKEN", "from the launcher", 1);
    WaylandStage stage;
    unsetenv("XDG_ACTIVATION_TOKEN");
    stage.Appear();
    stage.compositor.With(
        [](const CompositorState& state) { EXPECT_EQ(state.activations, Log{ "from the launcher" }); });
}

TEST(WaylandTopLevel, DoesWithoutWhatADesktopNeedNotHave)
{
    WaylandStage stage({ .without = { "zxdg_decoration_manager_v1", "xdg_activation_v1", "wl_seat", "wl_output" } });
    stage.Appear();
    EXPECT_TRUE(AskToRaise());
    stage.AwaitAnswer();
    stage.compositor.With([](const CompositorState& state) { EXPECT_EQ(state.buffer.widthPx, 640); });
}

TEST(WaylandTopLevel, GetsAlongWithTheOldestVersionsOfWhatItUses)
{
    WaylandStage stage({ .otherVersions = 1 });
    stage.Appear();
    stage.compositor.With([](const CompositorState& state) { EXPECT_EQ(state.buffer.widthPx, 640); });
}

std::size_t OpenFiles()
{
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

TEST(WaylandTopLevel, KeepsNoFileOpenOverAHundredSizes)
{
    WaylandStage stage({ .releases = ReleaseBuffers::Never }, { 1, false });
    stage.Appear();
    const std::size_t before = OpenFiles();
    for (int round = 0; round < 100; ++round) {
        stage.compositor.With([round](CompositorState& state) { state.Configure({ 330 + round, 250 }, {}); });
        stage.AwaitAnswer();
    }
    EXPECT_LE(OpenFiles(), before + 6); // three pictures here, and as many in the compositor
}

} // namespace
